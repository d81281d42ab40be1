Dim a(1)
a(2) = 1  ' error: 9
