Dim a()
ReDim Preserve a(1)
WScript.Echo UBound(a)  ' expect: 1
