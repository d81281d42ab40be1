On Error Resume Next
Execute "x = 1 / 0"
WScript.Echo Err.Number  ' expect: 11
