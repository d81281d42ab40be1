For i = 1 To 2
  For j = 1 To 2
    s = s & i & j & " "
  Next
Next
WScript.Echo s  ' expect: 11 12 21 22 
