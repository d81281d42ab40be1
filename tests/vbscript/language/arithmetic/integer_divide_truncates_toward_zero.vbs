WScript.Echo 7 \ 2    ' expect: 3
WScript.Echo -7 \ 2   ' expect: -3
WScript.Echo 7 \ -2   ' expect: -3
