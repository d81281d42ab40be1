WScript.Echo FormatNumber(0.5, 2, vbFalse)  ' expect: .50
WScript.Echo FormatNumber(-5, 2, vbTrue, vbTrue)  ' expect: (5.00)
WScript.Echo FormatNumber(1234.5, 1, vbTrue, vbFalse, vbFalse)  ' expect: 1234.5
