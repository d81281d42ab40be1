Class C
  Public Property Get P(a)
  End Property
  Public Property Let P(v)  ' compile error: 1051
  End Property
End Class
