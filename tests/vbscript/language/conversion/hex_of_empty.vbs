WScript.Echo Hex(Empty)  ' expect: 0
