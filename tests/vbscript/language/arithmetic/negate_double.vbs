WScript.Echo TypeName(-CDbl(7)) & " " & (-CDbl(7))  ' expect: Double -7
