Class C
  Private N
  Private Function Twice(x)
    Twice = x * 2
  End Function
  Public Function F(x)
    N = Twice(x)
    F = N
  End Function
End Class
Set o = New C
WScript.Echo o.F(4)  ' expect: 8
