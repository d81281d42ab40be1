x = -2147483647 - 2
WScript.Echo TypeName(x) & " " & x  ' expect: Double -2147483649
