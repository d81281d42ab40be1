Class C
  Property Get P
  End Function  ' compile error: 1050
End Class
