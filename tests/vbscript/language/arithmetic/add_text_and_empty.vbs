x = "a" + Empty
WScript.Echo TypeName(x) & x  ' expect: Stringa
