a = Split("a,b,c", ",", 2)
WScript.Echo UBound(a) & a(1)  ' expect: 1b,c
