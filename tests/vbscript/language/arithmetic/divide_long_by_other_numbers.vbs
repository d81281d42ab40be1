WScript.Echo TypeName(CLng(7) / CByte(2)) & " " & (CLng(7) / CByte(2))  ' expect: Double 3.5
WScript.Echo TypeName(CLng(7) / CInt(2)) & " " & (CLng(7) / CInt(2))  ' expect: Double 3.5
WScript.Echo TypeName(CLng(7) / CLng(2)) & " " & (CLng(7) / CLng(2))  ' expect: Double 3.5
WScript.Echo TypeName(CLng(7) / CSng(2)) & " " & (CLng(7) / CSng(2))  ' expect: Double 3.5
WScript.Echo TypeName(CLng(7) / CDbl(2)) & " " & (CLng(7) / CDbl(2))  ' expect: Double 3.5
