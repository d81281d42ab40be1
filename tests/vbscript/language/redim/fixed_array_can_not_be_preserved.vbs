Dim a(2)
ReDim Preserve a(3)  ' error: 10
