x = 2147483647
x = x + 1
WScript.Echo TypeName(x) & " " & x  ' expect: Double 2147483648
