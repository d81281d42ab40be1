With x
' compile error line 2: 1014
