n = 1
WScript.Echo "" & ("1" = n)  ' expect: True
n = 9
WScript.Echo "" & ("10" < n)  ' expect: True
