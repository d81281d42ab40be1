WScript.Echo "" & (3 > 2 > 1)  ' expect: False
