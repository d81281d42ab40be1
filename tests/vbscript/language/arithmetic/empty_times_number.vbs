x = Empty * 5
WScript.Echo TypeName(x) & x  ' expect: Integer0
