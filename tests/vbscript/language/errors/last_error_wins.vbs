On Error Resume Next
x = 1 / 0
x = CInt("a")
WScript.Echo Err.Number  ' expect: 13
