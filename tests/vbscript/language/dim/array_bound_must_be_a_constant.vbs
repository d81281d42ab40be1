n = 3
Dim a(n)  ' compile error: 1026
