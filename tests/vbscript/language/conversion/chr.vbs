WScript.Echo Chr(65) & Chr(97)  ' expect: Aa
WScript.Echo Asc(Chr(200))  ' expect: 200
