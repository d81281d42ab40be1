Function F
  Dim a(1)
  a(0) = 4
  F = a
End Function
x = F
WScript.Echo x(0)  ' expect: 4
