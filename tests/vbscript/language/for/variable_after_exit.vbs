For i = 1 To 3
  If i = 2 Then Exit For
Next
WScript.Echo i  ' expect: 2
