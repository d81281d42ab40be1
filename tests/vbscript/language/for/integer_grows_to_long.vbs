n = 0
For i = 32766 To 32769
  n = n + 1
Next
WScript.Echo n & " " & i & " " & TypeName(i)  ' expect: 4 32770 Long
