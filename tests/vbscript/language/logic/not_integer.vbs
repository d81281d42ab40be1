WScript.Echo TypeName(Not CInt(6)) & " " & (Not CInt(6))  ' expect: Integer -7
