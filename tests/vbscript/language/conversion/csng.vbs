WScript.Echo TypeName(CSng(1))  ' expect: Single
WScript.Echo CSng(1 / 3)  ' expect: 0.3333333
WScript.Echo CSng(16777216)  ' expect: 1.677722E+07
WScript.Echo CSng("0.1")  ' expect: 0.1
