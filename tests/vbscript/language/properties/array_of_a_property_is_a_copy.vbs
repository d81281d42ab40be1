Class C
  Public A
End Class
Set o = New C
o.A = Array(1, 2)
x = o.A
x(0) = 9
WScript.Echo o.A(0)  ' expect: 1
