On Error Resume Next
Err.Raise 0
WScript.Echo Err.Number  ' expect: 5
