On Error Resume Next
Err.Raise 4321
WScript.Echo Err.Description  ' expect: Unknown runtime error
