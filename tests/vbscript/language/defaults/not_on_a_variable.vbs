Class C
  Public Default A  ' compile error: 1056
End Class
