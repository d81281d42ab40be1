WScript.Echo TypeName(CSng(7) Mod CByte(2)) & " " & (CSng(7) Mod CByte(2))  ' expect: Long 1
WScript.Echo TypeName(CSng(7) Mod CInt(2)) & " " & (CSng(7) Mod CInt(2))  ' expect: Long 1
WScript.Echo TypeName(CSng(7) Mod CLng(2)) & " " & (CSng(7) Mod CLng(2))  ' expect: Long 1
WScript.Echo TypeName(CSng(7) Mod CSng(2)) & " " & (CSng(7) Mod CSng(2))  ' expect: Long 1
WScript.Echo TypeName(CSng(7) Mod CDbl(2)) & " " & (CSng(7) Mod CDbl(2))  ' expect: Long 1
