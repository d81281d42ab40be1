WScript.Echo TypeName(Not CDbl(6)) & " " & (Not CDbl(6))  ' expect: Long -7
