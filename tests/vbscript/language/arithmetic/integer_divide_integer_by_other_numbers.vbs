WScript.Echo TypeName(CInt(7) \ CByte(2)) & " " & (CInt(7) \ CByte(2))  ' expect: Integer 3
WScript.Echo TypeName(CInt(7) \ CInt(2)) & " " & (CInt(7) \ CInt(2))  ' expect: Integer 3
WScript.Echo TypeName(CInt(7) \ CLng(2)) & " " & (CInt(7) \ CLng(2))  ' expect: Long 3
WScript.Echo TypeName(CInt(7) \ CSng(2)) & " " & (CInt(7) \ CSng(2))  ' expect: Long 3
WScript.Echo TypeName(CInt(7) \ CDbl(2)) & " " & (CInt(7) \ CDbl(2))  ' expect: Long 3
