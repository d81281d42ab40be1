Dim a()
ReDim a(2)
WScript.Echo UBound(a)  ' expect: 2
