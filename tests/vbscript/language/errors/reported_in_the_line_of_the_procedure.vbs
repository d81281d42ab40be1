Sub P
  x = 1
  y = x / 0  ' error: 11 Division by zero
End Sub
P
