WScript.Echo &H10000            ' expect: 65536
WScript.Echo TypeName(&H10000)  ' expect: Long
WScript.Echo &HFFFFFFFF         ' expect: -1
WScript.Echo &H80000000         ' expect: -2147483648
WScript.Echo TypeName(&HFFFFFFFF)  ' expect: Long
