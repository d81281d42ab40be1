WScript.Echo Mid("abcdef", 2)  ' expect: bcdef
WScript.Echo Mid("abcdef", 2, 3)  ' expect: bcd
WScript.Echo Mid("abc", 2, 10)  ' expect: bc
WScript.Echo "[" & Mid("abc", 4) & "]"  ' expect: []
WScript.Echo "[" & Mid("abc", 10) & "]"  ' expect: []
WScript.Echo "[" & Mid("abc", 2, 0) & "]"  ' expect: []
WScript.Echo "" & IsNull(Mid(Null, 1))  ' expect: True
