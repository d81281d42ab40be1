WScript.Echo TypeName(CDbl(7) - CByte(2)) & " " & (CDbl(7) - CByte(2))  ' expect: Double 5
WScript.Echo TypeName(CDbl(7) - CInt(2)) & " " & (CDbl(7) - CInt(2))  ' expect: Double 5
WScript.Echo TypeName(CDbl(7) - CLng(2)) & " " & (CDbl(7) - CLng(2))  ' expect: Double 5
WScript.Echo TypeName(CDbl(7) - CSng(2)) & " " & (CDbl(7) - CSng(2))  ' expect: Double 5
WScript.Echo TypeName(CDbl(7) - CDbl(2)) & " " & (CDbl(7) - CDbl(2))  ' expect: Double 5
