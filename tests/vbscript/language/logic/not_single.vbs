WScript.Echo TypeName(Not CSng(6)) & " " & (Not CSng(6))  ' expect: Long -7
