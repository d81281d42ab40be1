WScript.Echo FormatPercent(0.256)  ' expect: 25.60%
WScript.Echo FormatPercent(0.5, 0)  ' expect: 50%
WScript.Echo FormatPercent(12.5)  ' expect: 1,250.00%
