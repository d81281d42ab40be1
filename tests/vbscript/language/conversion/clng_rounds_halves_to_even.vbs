WScript.Echo CLng(100000.5)  ' expect: 100000
WScript.Echo CLng(100001.5)  ' expect: 100002
