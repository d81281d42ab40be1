a = Split("a b c")
WScript.Echo UBound(a) & a(0) & a(2)  ' expect: 2ac
a = Split("a,b,,c", ",")
WScript.Echo UBound(a) & "[" & a(2) & "]"  ' expect: 3[]
