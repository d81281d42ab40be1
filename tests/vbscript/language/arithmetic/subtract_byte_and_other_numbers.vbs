WScript.Echo TypeName(CByte(7) - CByte(2)) & " " & (CByte(7) - CByte(2))  ' expect: Byte 5
WScript.Echo TypeName(CByte(7) - CInt(2)) & " " & (CByte(7) - CInt(2))  ' expect: Integer 5
WScript.Echo TypeName(CByte(7) - CLng(2)) & " " & (CByte(7) - CLng(2))  ' expect: Long 5
WScript.Echo TypeName(CByte(7) - CSng(2)) & " " & (CByte(7) - CSng(2))  ' expect: Single 5
WScript.Echo TypeName(CByte(7) - CDbl(2)) & " " & (CByte(7) - CDbl(2))  ' expect: Double 5
