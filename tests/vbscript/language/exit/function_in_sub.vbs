Sub P
  Exit Function  ' compile error: 1039
End Sub
