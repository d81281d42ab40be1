Dim a(2)
x = UBound(a, 2)  ' error: 9
