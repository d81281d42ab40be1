Class C
  Sub Class_Initialize(x)  ' compile error: 1053
  End Sub
End Class
