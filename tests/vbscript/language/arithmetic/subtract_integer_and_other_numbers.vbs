WScript.Echo TypeName(CInt(7) - CByte(2)) & " " & (CInt(7) - CByte(2))  ' expect: Integer 5
WScript.Echo TypeName(CInt(7) - CInt(2)) & " " & (CInt(7) - CInt(2))  ' expect: Integer 5
WScript.Echo TypeName(CInt(7) - CLng(2)) & " " & (CInt(7) - CLng(2))  ' expect: Long 5
WScript.Echo TypeName(CInt(7) - CSng(2)) & " " & (CInt(7) - CSng(2))  ' expect: Single 5
WScript.Echo TypeName(CInt(7) - CDbl(2)) & " " & (CInt(7) - CDbl(2))  ' expect: Double 5
