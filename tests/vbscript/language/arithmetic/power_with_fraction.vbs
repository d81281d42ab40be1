WScript.Echo 9 ^ 0.5  ' expect: 3
