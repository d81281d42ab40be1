Dim a()
ReDim a(2)
a(1) = 5
ReDim a(2)
WScript.Echo TypeName(a(1))  ' expect: Empty
