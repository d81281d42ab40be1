WScript.Echo TypeName(CLng(6) Or CByte(5)) & " " & (CLng(6) Or CByte(5))  ' expect: Long 7
WScript.Echo TypeName(CLng(6) Or CInt(5)) & " " & (CLng(6) Or CInt(5))  ' expect: Long 7
WScript.Echo TypeName(CLng(6) Or CLng(5)) & " " & (CLng(6) Or CLng(5))  ' expect: Long 7
WScript.Echo TypeName(CLng(6) Or CSng(5)) & " " & (CLng(6) Or CSng(5))  ' expect: Long 7
WScript.Echo TypeName(CLng(6) Or CDbl(5)) & " " & (CLng(6) Or CDbl(5))  ' expect: Long 7
