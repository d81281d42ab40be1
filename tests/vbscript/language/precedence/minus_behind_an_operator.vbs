WScript.Echo 2 * -3  ' expect: -6
WScript.Echo 5 - -3  ' expect: 8
