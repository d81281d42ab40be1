x = 1 & 2
WScript.Echo TypeName(x) & x  ' expect: String12
