WScript.Echo FormatNumber(1234.567)  ' expect: 1,234.57
WScript.Echo FormatNumber(1234567)  ' expect: 1,234,567.00
WScript.Echo FormatNumber(0.5)  ' expect: 0.50
WScript.Echo FormatNumber(-5)  ' expect: -5.00
WScript.Echo FormatNumber("12.3")  ' expect: 12.30
