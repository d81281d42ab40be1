WScript.Echo CInt(32767.4)  ' expect: 32767
WScript.Echo CInt(-32768)  ' expect: -32768
