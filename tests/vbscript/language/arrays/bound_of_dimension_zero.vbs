Dim a(2)
x = UBound(a, 0)  ' error: 9
