a = Split("abc", "")
WScript.Echo UBound(a) & a(0)  ' expect: 0abc
