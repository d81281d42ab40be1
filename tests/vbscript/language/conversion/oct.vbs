WScript.Echo Oct(8)  ' expect: 10
WScript.Echo Oct(-1)  ' expect: 177777
WScript.Echo Oct(CLng(-1))  ' expect: 37777777777
WScript.Echo Oct(0)  ' expect: 0
