: x = 2
WScript.Echo x  ' expect: 2
