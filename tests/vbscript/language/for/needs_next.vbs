For i = 1 To 2
  x = 1
' compile error line 3: 1020
