Dim a(2)
ReDim a(3)  ' error: 10 This array is fixed or temporarily locked
