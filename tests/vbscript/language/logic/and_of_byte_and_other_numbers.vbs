WScript.Echo TypeName(CByte(6) And CByte(5)) & " " & (CByte(6) And CByte(5))  ' expect: Byte 4
WScript.Echo TypeName(CByte(6) And CInt(5)) & " " & (CByte(6) And CInt(5))  ' expect: Integer 4
WScript.Echo TypeName(CByte(6) And CLng(5)) & " " & (CByte(6) And CLng(5))  ' expect: Long 4
WScript.Echo TypeName(CByte(6) And CSng(5)) & " " & (CByte(6) And CSng(5))  ' expect: Long 4
WScript.Echo TypeName(CByte(6) And CDbl(5)) & " " & (CByte(6) And CDbl(5))  ' expect: Long 4
