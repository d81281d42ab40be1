Sub A
  B
  WScript.Echo "never"
End Sub
Sub B
  x = 1 / 0
End Sub
On Error Resume Next
A
WScript.Echo Err.Number  ' expect: 11
