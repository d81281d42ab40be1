i = 0
Do Until i = 3
  i = i + 1
Loop
WScript.Echo i  ' expect: 3
