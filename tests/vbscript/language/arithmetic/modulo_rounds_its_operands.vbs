WScript.Echo 10 Mod 3.7  ' expect: 2
WScript.Echo 7.6 Mod 5   ' expect: 3
