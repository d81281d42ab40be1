WScript.Echo TypeName(CDbl(6) Or CByte(5)) & " " & (CDbl(6) Or CByte(5))  ' expect: Long 7
WScript.Echo TypeName(CDbl(6) Or CInt(5)) & " " & (CDbl(6) Or CInt(5))  ' expect: Long 7
WScript.Echo TypeName(CDbl(6) Or CLng(5)) & " " & (CDbl(6) Or CLng(5))  ' expect: Long 7
WScript.Echo TypeName(CDbl(6) Or CSng(5)) & " " & (CDbl(6) Or CSng(5))  ' expect: Long 7
WScript.Echo TypeName(CDbl(6) Or CDbl(5)) & " " & (CDbl(6) Or CDbl(5))  ' expect: Long 7
