WScript.Echo CInt(True)  ' expect: -1
WScript.Echo CInt(Empty)  ' expect: 0
WScript.Echo TypeName(CInt(CByte(3)))  ' expect: Integer
