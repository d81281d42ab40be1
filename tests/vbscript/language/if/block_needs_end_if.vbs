If True Then
  x = 1
' compile error line 4: 1014
