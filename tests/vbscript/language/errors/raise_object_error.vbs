On Error Resume Next
Err.Raise vbObjectError + 5, "s", "d"
WScript.Echo Err.Number - vbObjectError  ' expect: 5
