On Error Resume Next
Set o = New RegExp
o.Missing
WScript.Echo Err.Number  ' expect: 438
