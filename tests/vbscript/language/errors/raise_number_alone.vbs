On Error Resume Next
Err.Raise 13
WScript.Echo Err.Number & Err.Description  ' expect: 13Type mismatch
