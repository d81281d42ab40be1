Select Case 5
  Case 5
    x = 1
' compile error at end: 1014
