WScript.Echo Hex(255)  ' expect: FF
WScript.Echo Hex(0)  ' expect: 0
WScript.Echo Hex(-1)  ' expect: FFFF
WScript.Echo Hex(CLng(-1))  ' expect: FFFFFFFF
WScript.Echo Hex(65536)  ' expect: 10000
WScript.Echo Hex(2.5)  ' expect: 2
WScript.Echo Hex("16")  ' expect: 10
