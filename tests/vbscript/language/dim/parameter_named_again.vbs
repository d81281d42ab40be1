Sub P(a)
  Dim a  ' compile error: 1041
End Sub
