Do
  i = i + 1
Loop While False
WScript.Echo i  ' expect: 1
