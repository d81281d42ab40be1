x = 32767
x = x + 1
WScript.Echo TypeName(x) & " " & x  ' expect: Long 32768
