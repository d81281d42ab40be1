x = CInt(-32768)
x = -x
WScript.Echo TypeName(x) & " " & x  ' expect: Long 32768
