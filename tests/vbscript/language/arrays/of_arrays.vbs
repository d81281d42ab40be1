a = Array(Array(1, 2), Array(3, 4))
WScript.Echo a(1)(0)  ' expect: 3
a(1)(0) = 7
WScript.Echo a(1)(0)  ' expect: 7
