Class C
  Sub S
    Me  ' compile error: 1037
  End Sub
End Class
