WScript.Echo Not 1.5  ' expect: -3
WScript.Echo Not 2.5  ' expect: -3
