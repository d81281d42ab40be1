Class C
  Public Property Let P  ' compile error: 1054
  End Property
End Class
