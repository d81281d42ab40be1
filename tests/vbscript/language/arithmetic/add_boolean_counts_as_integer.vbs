x = True + True
WScript.Echo TypeName(x) & " " & x  ' expect: Integer -2
x = True + 1
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 0
