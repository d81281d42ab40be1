ReDim a(1), b(2, 3)
WScript.Echo UBound(a) & UBound(b) & UBound(b, 2)  ' expect: 123
