WScript.Echo 10 - 3 - 2  ' expect: 5
