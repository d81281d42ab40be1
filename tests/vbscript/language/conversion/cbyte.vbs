WScript.Echo TypeName(CByte(255)) & CByte(255)  ' expect: Byte255
WScript.Echo CByte("10")  ' expect: 10
WScript.Echo CByte(2.5)  ' expect: 2
