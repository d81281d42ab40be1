For i = 3 To 1 Step -1
  WScript.Echo i  ' expect: 3 | 2 | 1
Next
