Dim a(3)
a(4) = 1  ' error: 9 Subscript out of range
