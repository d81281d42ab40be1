Select Case 5
  Case 5
    x = 1
' compile error line 4: 1014
