Sub P
  For i = 1 To 3
  Next
End Sub
P
WScript.Echo TypeName(i)  ' expect: Empty
