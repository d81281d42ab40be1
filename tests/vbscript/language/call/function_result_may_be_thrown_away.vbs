Function F(n)
  WScript.Echo n  ' expect: 1 | 2
  F = n
End Function
F 1
Call F(2)
