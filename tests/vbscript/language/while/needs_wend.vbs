While True
  x = 1
' compile error at end: 1018
