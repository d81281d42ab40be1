For i = 1 To 2
  For j = 1 To 5
    If j = 2 Then Exit For
    s = s & i & j & " "
  Next
Next
WScript.Echo Trim(s)  ' expect: 11 21
