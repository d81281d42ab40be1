WScript.Echo TypeName(0)           ' expect: Integer
WScript.Echo TypeName(32767)       ' expect: Integer
WScript.Echo TypeName(32768)       ' expect: Long
WScript.Echo TypeName(2147483647)  ' expect: Long
WScript.Echo TypeName(2147483648)  ' expect: Double
