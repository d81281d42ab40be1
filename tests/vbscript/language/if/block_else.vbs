If False Then
  WScript.Echo "a"
ElseIf False Then
  WScript.Echo "b"
Else
  WScript.Echo "c"  ' expect: c
End If
