Class C
  Public A
  Public A  ' compile error: 1041
End Class
