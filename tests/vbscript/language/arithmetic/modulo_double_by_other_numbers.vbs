WScript.Echo TypeName(CDbl(7) Mod CByte(2)) & " " & (CDbl(7) Mod CByte(2))  ' expect: Long 1
WScript.Echo TypeName(CDbl(7) Mod CInt(2)) & " " & (CDbl(7) Mod CInt(2))  ' expect: Long 1
WScript.Echo TypeName(CDbl(7) Mod CLng(2)) & " " & (CDbl(7) Mod CLng(2))  ' expect: Long 1
WScript.Echo TypeName(CDbl(7) Mod CSng(2)) & " " & (CDbl(7) Mod CSng(2))  ' expect: Long 1
WScript.Echo TypeName(CDbl(7) Mod CDbl(2)) & " " & (CDbl(7) Mod CDbl(2))  ' expect: Long 1
