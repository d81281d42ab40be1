Dim a()
ReDim a(1)
ReDim a(2, 3)
WScript.Echo UBound(a, 2)  ' expect: 3
