Dim a(1)
a(2) = 1  ' error: 9 Subscript out of range
