Dim a(3)
a(4) = 1  ' error: 9
