On Error Resume Next
x = 1 / 0
On Error GoTo 0
WScript.Echo Err.Number  ' expect: 0
