x = True * True
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 1
