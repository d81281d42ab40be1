Class C
  Private Property Get P
    P = 5
  End Property
End Class
Set o = New C
x = o.P  ' error: 438
