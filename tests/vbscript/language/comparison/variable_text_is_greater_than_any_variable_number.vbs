s = "1"
n = 1
WScript.Echo "" & (s = n)  ' expect: False
n = 1000
WScript.Echo "" & (s > n)  ' expect: True
WScript.Echo "" & (n < s)  ' expect: True
