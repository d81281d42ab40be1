Dim a()
n = 2
ReDim a(n * 2 + 1)
WScript.Echo UBound(a)  ' expect: 5
