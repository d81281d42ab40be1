WScript.Echo Len("a" & Chr(0) & "b")  ' expect: 3
