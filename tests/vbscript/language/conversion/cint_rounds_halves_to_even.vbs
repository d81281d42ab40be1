WScript.Echo CInt(0.5)  ' expect: 0
WScript.Echo CInt(1.5)  ' expect: 2
WScript.Echo CInt(2.5)  ' expect: 2
WScript.Echo CInt(3.5)  ' expect: 4
WScript.Echo CInt(-0.5)  ' expect: 0
WScript.Echo CInt(-1.5)  ' expect: -2
WScript.Echo CInt(-2.5)  ' expect: -2
WScript.Echo CInt(2.51)  ' expect: 3
