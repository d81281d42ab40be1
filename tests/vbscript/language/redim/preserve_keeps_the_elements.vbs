Dim a()
ReDim a(2)
a(0) = "x" : a(2) = "y"
ReDim Preserve a(4)
WScript.Echo a(0) & a(2) & TypeName(a(4))  ' expect: xyEmpty
