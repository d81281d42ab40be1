WScript.Echo "" & ("1" = 1)   ' expect: True
WScript.Echo "" & ("10" > 9)  ' expect: True
