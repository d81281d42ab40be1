x = -True
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 1
