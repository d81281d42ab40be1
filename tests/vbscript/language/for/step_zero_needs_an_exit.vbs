For i = 1 To 2 Step 0
  n = n + 1
  If n = 5 Then Exit For
Next
WScript.Echo n & i  ' expect: 51
