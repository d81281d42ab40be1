Select Case 5
  Case 1 To 9  ' compile error: 1025
End Select
