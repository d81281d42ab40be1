WScript.Echo TypeName(CByte(6) Xor CByte(5)) & " " & (CByte(6) Xor CByte(5))  ' expect: Byte 3
WScript.Echo TypeName(CByte(6) Xor CInt(5)) & " " & (CByte(6) Xor CInt(5))  ' expect: Integer 3
WScript.Echo TypeName(CByte(6) Xor CLng(5)) & " " & (CByte(6) Xor CLng(5))  ' expect: Long 3
WScript.Echo TypeName(CByte(6) Xor CSng(5)) & " " & (CByte(6) Xor CSng(5))  ' expect: Long 3
WScript.Echo TypeName(CByte(6) Xor CDbl(5)) & " " & (CByte(6) Xor CDbl(5))  ' expect: Long 3
