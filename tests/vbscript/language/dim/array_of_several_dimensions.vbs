Dim a(1, 2, 3)
a(1, 2, 3) = "corner"
WScript.Echo a(1, 2, 3) & UBound(a, 1) & UBound(a, 2) & UBound(a, 3)  ' expect: corner123
