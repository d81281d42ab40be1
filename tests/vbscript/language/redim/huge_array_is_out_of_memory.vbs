On Error Resume Next
ReDim a(2147483646)
WScript.Echo Err.Number  ' expect: 7
