WScript.Echo FormatNumber(2.5, 0)  ' expect: 3
WScript.Echo FormatNumber(3.5, 0)  ' expect: 4
WScript.Echo FormatNumber(1.23456, 4)  ' expect: 1.2346
WScript.Echo FormatNumber(1, 3)  ' expect: 1.000
