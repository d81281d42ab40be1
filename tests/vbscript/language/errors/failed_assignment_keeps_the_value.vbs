On Error Resume Next
x = 5
x = 1 / 0
WScript.Echo x  ' expect: 5
