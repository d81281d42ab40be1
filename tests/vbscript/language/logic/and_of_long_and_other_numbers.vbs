WScript.Echo TypeName(CLng(6) And CByte(5)) & " " & (CLng(6) And CByte(5))  ' expect: Long 4
WScript.Echo TypeName(CLng(6) And CInt(5)) & " " & (CLng(6) And CInt(5))  ' expect: Long 4
WScript.Echo TypeName(CLng(6) And CLng(5)) & " " & (CLng(6) And CLng(5))  ' expect: Long 4
WScript.Echo TypeName(CLng(6) And CSng(5)) & " " & (CLng(6) And CSng(5))  ' expect: Long 4
WScript.Echo TypeName(CLng(6) And CDbl(5)) & " " & (CLng(6) And CDbl(5))  ' expect: Long 4
