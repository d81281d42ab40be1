WScript.Echo RGB(1, 2, 3)  ' expect: 197121
WScript.Echo RGB(255, 0, 0)  ' expect: 255
WScript.Echo RGB(300, 0, 0)  ' expect: 255
