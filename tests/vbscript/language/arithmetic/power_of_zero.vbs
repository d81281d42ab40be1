WScript.Echo 0 ^ 0  ' expect: 1
