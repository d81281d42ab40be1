Dim a()
ReDim a(1, 1)
a(0, 0) = "00" : a(1, 0) = "10" : a(0, 1) = "01" : a(1, 1) = "11"
ReDim Preserve a(1, 2)
WScript.Echo a(0, 0) & a(1, 0) & a(0, 1) & a(1, 1) & TypeName(a(1, 2))  ' expect: 00100111Empty
