WScript.Echo LenB("abc")  ' expect: 6
