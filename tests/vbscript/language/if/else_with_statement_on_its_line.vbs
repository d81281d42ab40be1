If False Then
  x = 1
Else x = 2
End If
WScript.Echo x  ' expect: 2
