a = Array(1)
x = a(0, 0)  ' error: 9
