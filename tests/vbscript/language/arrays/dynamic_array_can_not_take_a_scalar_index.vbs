Dim a()
a(0) = 1  ' error: 9
