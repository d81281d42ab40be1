WScript.Echo 7.5 \ 2   ' expect: 4
WScript.Echo 8.5 \ 2   ' expect: 4
WScript.Echo 9 \ 2.5   ' expect: 4
