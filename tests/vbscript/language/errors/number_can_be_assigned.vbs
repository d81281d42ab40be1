On Error Resume Next
Err.Number = 9
WScript.Echo Err.Number  ' expect: 9
