x = -Empty
WScript.Echo TypeName(x) & x  ' expect: Integer0
