Sub Grow(v)
  ReDim Preserve v(3)
  v(3) = "grown"
End Sub
Dim a()
ReDim a(0)
Grow a
WScript.Echo UBound(a) & a(3)  ' expect: 3grown
