Dim a(4)
a("x") = 1  ' error: 13
