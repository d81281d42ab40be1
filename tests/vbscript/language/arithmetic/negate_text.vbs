x = -"5"
WScript.Echo TypeName(x) & x  ' expect: Double-5
