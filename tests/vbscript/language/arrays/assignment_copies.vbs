a = Array(1, 2)
b = a
b(0) = 9
WScript.Echo a(0) & b(0)  ' expect: 19
