Function F
  F = Array(1, 2, 3)
End Function
WScript.Echo F()(1)  ' expect: 2
