If False Then
  x = 1
ElseIf True Then x = 2
End If
WScript.Echo x  ' expect: 2
