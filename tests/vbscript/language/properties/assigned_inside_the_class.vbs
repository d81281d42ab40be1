Class C
  Private m
  Public Property Let P(v)
    m = v
  End Property
  Public Property Get P
    P = m
  End Property
  Public Sub S
    P = 4
  End Sub
End Class
Set o = New C
o.S
WScript.Echo o.P  ' expect: 4
