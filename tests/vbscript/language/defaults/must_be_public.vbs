Class C
  Private Default Property Get A  ' compile error: 1057
  End Property
End Class
