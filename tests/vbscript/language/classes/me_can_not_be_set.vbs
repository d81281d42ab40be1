Class C
  Sub S
    Set Me = Nothing  ' compile error: 1037 @9
  End Sub
End Class
