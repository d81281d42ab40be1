x = CLng(-2147483647) - 1
WScript.Echo TypeName(x)  ' expect: Long
x = -x
WScript.Echo TypeName(x) & " " & x  ' expect: Double 2147483648
