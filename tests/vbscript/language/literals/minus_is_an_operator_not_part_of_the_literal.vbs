WScript.Echo TypeName(-32768)       ' expect: Long
WScript.Echo TypeName(-2147483648)  ' expect: Double
