i = 0
While i < 3
  i = i + 1
Wend
WScript.Echo i  ' expect: 3
