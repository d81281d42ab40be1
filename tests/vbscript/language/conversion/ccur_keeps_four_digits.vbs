WScript.Echo CCur(1.23456)  ' expect: 1.2346
WScript.Echo TypeName(CCur(1))  ' expect: Currency
WScript.Echo CCur("1.5")  ' expect: 1.5
