[A b] = 1
WScript.Echo [a B]  ' expect: 1
