For i = 1 To 2
  For i = 1 To 2  ' compile error: 1040
  Next
Next
