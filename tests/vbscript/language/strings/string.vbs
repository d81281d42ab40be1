WScript.Echo String(3, "x")  ' expect: xxx
WScript.Echo String(3, "xyz")  ' expect: xxx
WScript.Echo String(3, 65)  ' expect: AAA
WScript.Echo Len(String(0, "x"))  ' expect: 0
WScript.Echo String(2, 256 + 65)  ' expect: AA
