Function F
  Exit Property  ' compile error: 1039
End Function
