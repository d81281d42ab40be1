WScript.Echo TypeName(CLng(6) Xor CByte(5)) & " " & (CLng(6) Xor CByte(5))  ' expect: Long 3
WScript.Echo TypeName(CLng(6) Xor CInt(5)) & " " & (CLng(6) Xor CInt(5))  ' expect: Long 3
WScript.Echo TypeName(CLng(6) Xor CLng(5)) & " " & (CLng(6) Xor CLng(5))  ' expect: Long 3
WScript.Echo TypeName(CLng(6) Xor CSng(5)) & " " & (CLng(6) Xor CSng(5))  ' expect: Long 3
WScript.Echo TypeName(CLng(6) Xor CDbl(5)) & " " & (CLng(6) Xor CDbl(5))  ' expect: Long 3
