x = 3
Dim x
WScript.Echo x  ' expect: 3
