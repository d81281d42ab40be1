Function F
  F = 1
End Function
Function F
  F = 2
End Function
WScript.Echo F  ' expect: 2
