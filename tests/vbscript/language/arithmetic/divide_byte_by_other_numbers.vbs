WScript.Echo TypeName(CByte(7) / CByte(2)) & " " & (CByte(7) / CByte(2))  ' expect: Double 3.5
WScript.Echo TypeName(CByte(7) / CInt(2)) & " " & (CByte(7) / CInt(2))  ' expect: Double 3.5
WScript.Echo TypeName(CByte(7) / CLng(2)) & " " & (CByte(7) / CLng(2))  ' expect: Double 3.5
WScript.Echo TypeName(CByte(7) / CSng(2)) & " " & (CByte(7) / CSng(2))  ' expect: Single 3.5
WScript.Echo TypeName(CByte(7) / CDbl(2)) & " " & (CByte(7) / CDbl(2))  ' expect: Double 3.5
