WScript.Echo "" & (CSng(0.5) = 0.5)  ' expect: True
