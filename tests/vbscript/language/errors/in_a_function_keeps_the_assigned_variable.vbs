Function F
  F = 1 / 0
End Function
On Error Resume Next
x = "old"
x = F
WScript.Echo x  ' expect: old
