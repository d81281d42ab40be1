Dim a(2)
a = Array(1)  ' error: 13
