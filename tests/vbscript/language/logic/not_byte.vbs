x = Not CByte(6)
WScript.Echo TypeName(x) & " " & x  ' expect: Byte 249
