While True
  x = 1
' compile error line 3: 1018
