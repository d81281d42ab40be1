WScript.Echo FormatCurrency(1234.5)  ' expect: $1,234.50
WScript.Echo FormatCurrency(0.5, 1)  ' expect: $0.5
WScript.Echo FormatCurrency(-5, 2, vbTrue, vbTrue)  ' expect: ($5.00)
