Function F
  F = 3
  Exit Function
  F = 4
End Function
WScript.Echo F  ' expect: 3
