If False Then a = 1 Else a = 2 : b = 3
WScript.Echo a & b  ' expect: 23
