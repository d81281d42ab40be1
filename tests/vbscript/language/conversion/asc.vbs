WScript.Echo Asc("A")  ' expect: 65
WScript.Echo Asc("abc")  ' expect: 97
WScript.Echo TypeName(Asc("A"))  ' expect: Integer
