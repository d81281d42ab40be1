x = -32767 - 2
WScript.Echo TypeName(x) & " " & x  ' expect: Long -32769
