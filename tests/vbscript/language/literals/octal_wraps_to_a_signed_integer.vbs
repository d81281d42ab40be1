WScript.Echo &O177777  ' expect: -1
WScript.Echo &O100000  ' expect: -32768
