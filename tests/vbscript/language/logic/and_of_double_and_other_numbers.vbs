WScript.Echo TypeName(CDbl(6) And CByte(5)) & " " & (CDbl(6) And CByte(5))  ' expect: Long 4
WScript.Echo TypeName(CDbl(6) And CInt(5)) & " " & (CDbl(6) And CInt(5))  ' expect: Long 4
WScript.Echo TypeName(CDbl(6) And CLng(5)) & " " & (CDbl(6) And CLng(5))  ' expect: Long 4
WScript.Echo TypeName(CDbl(6) And CSng(5)) & " " & (CDbl(6) And CSng(5))  ' expect: Long 4
WScript.Echo TypeName(CDbl(6) And CDbl(5)) & " " & (CDbl(6) And CDbl(5))  ' expect: Long 4
