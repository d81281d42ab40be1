Class C
End Class
Function F
  Set F = New C
End Function
WScript.Echo TypeName(F)  ' expect: C
