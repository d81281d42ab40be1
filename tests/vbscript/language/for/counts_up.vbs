For i = 1 To 3
  WScript.Echo i  ' expect: 1 | 2 | 3
Next
