Dim a As Integer  ' compile error: 1025
