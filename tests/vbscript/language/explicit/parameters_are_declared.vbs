Option Explicit
Function F(a)
  F = a
End Function
WScript.Echo F(3)  ' expect: 3
