WScript.Echo InStrRev("abcabc", "b")  ' expect: 5
WScript.Echo InStrRev("abcabc", "b", 4)  ' expect: 2
WScript.Echo InStrRev("abc", "x")  ' expect: 0
WScript.Echo InStrRev("ABC", "b", -1, 1)  ' expect: 2
WScript.Echo InStrRev("abc", "")  ' expect: 3
WScript.Echo InStrRev("", "a")  ' expect: 0
WScript.Echo InStrRev("abc", "a", 10)  ' expect: 0
