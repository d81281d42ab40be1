WScript.Echo CCur(0.00005) & ""  ' expect: 0
WScript.Echo CCur(0.00015) & ""  ' expect: 0.0002
