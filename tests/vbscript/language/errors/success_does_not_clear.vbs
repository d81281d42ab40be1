On Error Resume Next
x = 1 / 0
y = 1
WScript.Echo Err.Number  ' expect: 11
