Dim a()
ReDim a(2)
Erase a
ReDim a(5)
WScript.Echo UBound(a)  ' expect: 5
