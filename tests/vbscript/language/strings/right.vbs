WScript.Echo Right("abc", 2)  ' expect: bc
WScript.Echo Right("abc", 10)  ' expect: abc
WScript.Echo "[" & Right("abc", 0) & "]"  ' expect: []
WScript.Echo "" & IsNull(Right(Null, 1))  ' expect: True
