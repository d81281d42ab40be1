Sub P
  On Error Resume Next
  x = 1 / 0
End Sub
P
x = 1 / 0  ' error: 11
