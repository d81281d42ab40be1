x = True And 6
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 6
