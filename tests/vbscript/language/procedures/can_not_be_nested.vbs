Sub A
  Sub B  ' compile error: 1002
  End Sub
End Sub
