Dim a(2)
a(1) = 5
Erase a
WScript.Echo UBound(a) & TypeName(a(1))  ' expect: 2Empty
