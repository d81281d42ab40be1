Dim a()
a = Array(1, 2)
WScript.Echo UBound(a)  ' expect: 1
