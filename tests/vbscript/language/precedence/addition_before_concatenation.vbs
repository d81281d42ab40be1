WScript.Echo 1 & 2 + 3  ' expect: 15
