WScript.Echo InStr("ABC", "b")  ' expect: 0
WScript.Echo InStr(1, "ABC", "b", 1)  ' expect: 2
WScript.Echo InStr(1, "ABC", "b", vbTextCompare)  ' expect: 2
