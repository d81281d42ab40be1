x = 100000 * 100000
WScript.Echo TypeName(x) & " " & x  ' expect: Double 10000000000
