Sub P
  P
End Sub
On Error Resume Next
P
WScript.Echo Err.Number & " " & Err.Description  ' expect: 28 Out of stack space
