s = "1"
WScript.Echo "" & (s = 1)  ' expect: True
s = "10"
WScript.Echo "" & (s > 9)  ' expect: True
