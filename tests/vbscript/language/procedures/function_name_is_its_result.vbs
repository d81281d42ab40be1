Function F
  F = 1
  F = F + 1
End Function
WScript.Echo F  ' expect: 2
