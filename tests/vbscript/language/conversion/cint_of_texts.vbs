WScript.Echo CInt("12")  ' expect: 12
WScript.Echo CInt("2.5")  ' expect: 2
WScript.Echo CInt(" 7 ")  ' expect: 7
WScript.Echo CInt("1e2")  ' expect: 100
WScript.Echo CInt("&HF")  ' expect: 15
