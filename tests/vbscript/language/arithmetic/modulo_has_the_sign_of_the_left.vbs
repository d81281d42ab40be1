WScript.Echo 7 Mod 3    ' expect: 1
WScript.Echo -7 Mod 3   ' expect: -1
WScript.Echo 7 Mod -3   ' expect: 1
