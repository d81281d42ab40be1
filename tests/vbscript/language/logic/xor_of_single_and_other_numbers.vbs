WScript.Echo TypeName(CSng(6) Xor CByte(5)) & " " & (CSng(6) Xor CByte(5))  ' expect: Long 3
WScript.Echo TypeName(CSng(6) Xor CInt(5)) & " " & (CSng(6) Xor CInt(5))  ' expect: Long 3
WScript.Echo TypeName(CSng(6) Xor CLng(5)) & " " & (CSng(6) Xor CLng(5))  ' expect: Long 3
WScript.Echo TypeName(CSng(6) Xor CSng(5)) & " " & (CSng(6) Xor CSng(5))  ' expect: Long 3
WScript.Echo TypeName(CSng(6) Xor CDbl(5)) & " " & (CSng(6) Xor CDbl(5))  ' expect: Long 3
