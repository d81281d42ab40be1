WScript.Echo TypeName(Not CLng(6)) & " " & (Not CLng(6))  ' expect: Long -7
