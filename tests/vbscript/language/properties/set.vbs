Class C
  Private m
  Public Property Set P(v)
    Set m = v
  End Property
  Public Property Get P
    Set P = m
  End Property
End Class
Set o = New C
Set o.P = o
WScript.Echo "" & (o.P Is o)  ' expect: True
