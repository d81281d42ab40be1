For i = 3 To 1
  WScript.Echo "never"
Next
WScript.Echo i  ' expect: 3
