x = Array(1, 2, 3)
ReDim Preserve x(3)
WScript.Echo x(0) & x(2) & TypeName(x(3))  ' expect: 13Empty
