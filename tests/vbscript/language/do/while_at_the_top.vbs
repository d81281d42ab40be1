i = 0
Do While i < 3
  i = i + 1
Loop
WScript.Echo i  ' expect: 3
