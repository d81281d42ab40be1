For i = "1" To "3"
  s = s & i
Next
WScript.Echo s  ' expect: 123
