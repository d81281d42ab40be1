Dim a()
ReDim a(1, 1)
ReDim Preserve a(1)  ' error: 9
