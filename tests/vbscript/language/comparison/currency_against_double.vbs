WScript.Echo "" & (CCur(1.25) = 1.25)  ' expect: True
