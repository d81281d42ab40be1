WScript.Echo InStr("abcabc", "b")  ' expect: 2
WScript.Echo InStr("abc", "x")  ' expect: 0
WScript.Echo InStr(3, "abcabc", "b")  ' expect: 5
WScript.Echo InStr("abc", "")  ' expect: 1
WScript.Echo InStr("", "a") & InStr("", "")  ' expect: 00
WScript.Echo InStr(10, "abc", "a")  ' expect: 0
WScript.Echo InStr(2, "abc", "")  ' expect: 2
