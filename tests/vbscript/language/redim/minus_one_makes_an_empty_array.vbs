Dim a()
ReDim a(-1)
WScript.Echo UBound(a)  ' expect: -1
