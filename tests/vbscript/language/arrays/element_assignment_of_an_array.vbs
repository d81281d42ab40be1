Dim a(1)
a(0) = Array(1, 2)
a(0)(1) = 5
WScript.Echo a(0)(1)  ' expect: 5
