WScript.Echo &HFFFF&            ' expect: 65535
WScript.Echo TypeName(&HFFFF&)  ' expect: Long
