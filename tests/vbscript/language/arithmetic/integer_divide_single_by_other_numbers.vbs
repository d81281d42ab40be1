WScript.Echo TypeName(CSng(7) \ CByte(2)) & " " & (CSng(7) \ CByte(2))  ' expect: Long 3
WScript.Echo TypeName(CSng(7) \ CInt(2)) & " " & (CSng(7) \ CInt(2))  ' expect: Long 3
WScript.Echo TypeName(CSng(7) \ CLng(2)) & " " & (CSng(7) \ CLng(2))  ' expect: Long 3
WScript.Echo TypeName(CSng(7) \ CSng(2)) & " " & (CSng(7) \ CSng(2))  ' expect: Long 3
WScript.Echo TypeName(CSng(7) \ CDbl(2)) & " " & (CSng(7) \ CDbl(2))  ' expect: Long 3
