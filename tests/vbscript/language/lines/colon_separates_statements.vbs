a = 1 : b = 2 : WScript.Echo a + b  ' expect: 3
