n = 3
For i = 1 To n
  n = 10
Next
WScript.Echo i  ' expect: 4
