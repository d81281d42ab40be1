Dim a(3)
a(-1) = 1  ' error: 9
