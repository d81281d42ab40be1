Sub P
  Dim x
  x = x + 1
  WScript.Echo x  ' expect: 1 | 1
End Sub
P
P
