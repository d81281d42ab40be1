x = 300 * 300
WScript.Echo TypeName(x) & " " & x  ' expect: Long 90000
