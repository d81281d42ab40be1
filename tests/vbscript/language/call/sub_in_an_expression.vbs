Sub P
End Sub
x = P()
WScript.Echo TypeName(x)  ' expect: Empty
