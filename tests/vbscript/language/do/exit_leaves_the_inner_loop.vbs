Do
  Do
    n = n + 1
    Exit Do
  Loop
  If n = 3 Then Exit Do
Loop
WScript.Echo n  ' expect: 3
