WScript.Echo Left("abc", 2)  ' expect: ab
WScript.Echo Left("abc", 10)  ' expect: abc
WScript.Echo "[" & Left("abc", 0) & "]"  ' expect: []
WScript.Echo "" & IsNull(Left(Null, 1))  ' expect: True
WScript.Echo Left(123, 2)  ' expect: 12
