x = Empty Or 6
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 6
