WScript.Echo 12 / 2 * 3  ' expect: 18
