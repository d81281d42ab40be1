x = "abc
WScript.Echo 1  ' this file must not compile: the text above has no end
' compile error line 1: 1033
