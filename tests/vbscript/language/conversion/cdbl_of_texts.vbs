WScript.Echo CDbl("1.5")  ' expect: 1.5
WScript.Echo CDbl("1,234.5")  ' expect: 1234.5
WScript.Echo CDbl("-3")  ' expect: -3
WScript.Echo CDbl("1E3")  ' expect: 1000
WScript.Echo CDbl("$5")  ' expect: 5
WScript.Echo CDbl("(5)")  ' expect: -5
WScript.Echo CDbl("5-")  ' expect: -5
