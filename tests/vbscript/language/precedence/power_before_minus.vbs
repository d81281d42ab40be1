WScript.Echo -2 ^ 2  ' expect: -4
