x = True + 100000
WScript.Echo TypeName(x) & " " & x  ' expect: Long 99999
