Dim a(2, 4)
WScript.Echo UBound(a) & UBound(a, 1) & UBound(a, 2) & LBound(a, 2)  ' expect: 2240
