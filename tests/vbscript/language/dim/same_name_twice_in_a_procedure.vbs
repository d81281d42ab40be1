Sub P
  Dim a, a  ' compile error: 1041
End Sub
