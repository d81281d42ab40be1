Class C
  Property Get P
  End Property
  Property Get P  ' compile error: 1041
  End Property
End Class
