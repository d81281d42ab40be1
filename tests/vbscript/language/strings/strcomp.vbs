WScript.Echo StrComp("a", "b") & StrComp("b", "a") & StrComp("a", "a")  ' expect: -110
WScript.Echo StrComp("a", "A")  ' expect: 1
WScript.Echo StrComp("a", "A", 1)  ' expect: 0
WScript.Echo StrComp("ab", "a")  ' expect: 1
WScript.Echo "" & IsNull(StrComp(Null, "a"))  ' expect: True
