If False Then a = 1 : a = 2
WScript.Echo TypeName(a)  ' expect: Empty
