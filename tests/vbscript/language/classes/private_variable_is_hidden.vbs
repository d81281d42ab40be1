Class C
  Private N
End Class
Set o = New C
o.N = 1  ' error: 438
