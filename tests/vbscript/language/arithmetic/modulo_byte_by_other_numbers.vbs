WScript.Echo TypeName(CByte(7) Mod CByte(2)) & " " & (CByte(7) Mod CByte(2))  ' expect: Byte 1
WScript.Echo TypeName(CByte(7) Mod CInt(2)) & " " & (CByte(7) Mod CInt(2))  ' expect: Integer 1
WScript.Echo TypeName(CByte(7) Mod CLng(2)) & " " & (CByte(7) Mod CLng(2))  ' expect: Long 1
WScript.Echo TypeName(CByte(7) Mod CSng(2)) & " " & (CByte(7) Mod CSng(2))  ' expect: Long 1
WScript.Echo TypeName(CByte(7) Mod CDbl(2)) & " " & (CByte(7) Mod CDbl(2))  ' expect: Long 1
