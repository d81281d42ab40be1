x = Not Empty
WScript.Echo TypeName(x) & " " & x  ' expect: Integer -1
