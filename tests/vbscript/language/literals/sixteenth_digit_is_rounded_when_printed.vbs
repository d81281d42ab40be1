WScript.Echo 0.1 + 0.2      ' expect: 0.3
WScript.Echo 1 / 3          ' expect: 0.333333333333333
WScript.Echo 2 / 3          ' expect: 0.666666666666667
