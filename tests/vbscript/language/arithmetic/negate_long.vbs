WScript.Echo TypeName(-CLng(7)) & " " & (-CLng(7))  ' expect: Long -7
