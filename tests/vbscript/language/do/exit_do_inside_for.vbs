Do
  For i = 1 To 5
    If i = 3 Then Exit Do
  Next
Loop
WScript.Echo i  ' expect: 3
