Dim Value
VALUE = 3
WScript.Echo value  ' expect: 3
