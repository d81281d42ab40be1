Dim a()
ReDim a(4)
a(1) = "b"
ReDim Preserve a(1)
WScript.Echo a(1) & UBound(a)  ' expect: b1
