Option Explicit
Sub P
  y = 1  ' error: 500
End Sub
P
