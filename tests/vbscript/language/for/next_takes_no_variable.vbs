For i = 1 To 2
Next i  ' compile error: 1025
