WScript.Echo 2 ^ -2  ' expect: 0.25
