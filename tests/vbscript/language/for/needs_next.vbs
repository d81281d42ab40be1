For i = 1 To 2
  x = 1
' compile error at end: 1020
