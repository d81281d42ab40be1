Function F
End Function
WScript.Echo TypeName(F)  ' expect: Empty
