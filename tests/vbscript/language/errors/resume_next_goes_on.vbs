On Error Resume Next
x = 1 / 0
WScript.Echo Err.Number        ' expect: 11
WScript.Echo Err.Description   ' expect: Division by zero
WScript.Echo Err.Source        ' expect: Microsoft VBScript runtime error
