If True Then
  x = 1
' compile error at end: 1014
