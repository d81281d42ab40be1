Do
  i = i + 1
Loop Until True
WScript.Echo i  ' expect: 1
