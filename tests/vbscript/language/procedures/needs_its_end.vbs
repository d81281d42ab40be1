Sub A
  x = 1
' compile error line 3: 1014
