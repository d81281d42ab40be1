Class C
  Property P  ' compile error: 1049
  End Property
End Class
