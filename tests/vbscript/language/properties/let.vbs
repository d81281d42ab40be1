Class C
  Private m
  Public Property Let P(v)
    m = v * 2
  End Property
  Public Property Get P
    P = m
  End Property
End Class
Set o = New C
o.P = 4
WScript.Echo o.P  ' expect: 8
