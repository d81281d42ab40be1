Sub P
  WScript.Echo "before"  ' expect: before
  x = 1 / 0
  WScript.Echo "never"
End Sub
On Error Resume Next
P
WScript.Echo "after " & Err.Number  ' expect: after 11
