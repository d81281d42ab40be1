WScript.Echo TypeName(CSng(6) Or CByte(5)) & " " & (CSng(6) Or CByte(5))  ' expect: Long 7
WScript.Echo TypeName(CSng(6) Or CInt(5)) & " " & (CSng(6) Or CInt(5))  ' expect: Long 7
WScript.Echo TypeName(CSng(6) Or CLng(5)) & " " & (CSng(6) Or CLng(5))  ' expect: Long 7
WScript.Echo TypeName(CSng(6) Or CSng(5)) & " " & (CSng(6) Or CSng(5))  ' expect: Long 7
WScript.Echo TypeName(CSng(6) Or CDbl(5)) & " " & (CSng(6) Or CDbl(5))  ' expect: Long 7
