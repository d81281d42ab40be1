For i = 1 To 3
Next
WScript.Echo i  ' expect: 4
