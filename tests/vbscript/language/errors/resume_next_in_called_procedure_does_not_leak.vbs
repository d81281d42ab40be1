Sub P
  On Error Resume Next
  x = 1 / 0
  Err.Clear
End Sub
P
WScript.Echo Err.Number  ' expect: 0
