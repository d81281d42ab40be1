a = Array(Array(1, 2), 3)
b = a
b(0)(0) = 9
WScript.Echo a(0)(0) & b(0)(0)  ' expect: 19
