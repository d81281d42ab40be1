Dim a(4)
a(True) = 1  ' error: 9
