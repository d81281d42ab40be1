WScript.Echo (-2) ^ 3  ' expect: -8
