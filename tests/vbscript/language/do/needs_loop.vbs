Do
  x = 1
' compile error at end: 1019
