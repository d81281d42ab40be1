WScript.Echo "" & (Not 1 = 2)  ' expect: True
