If 1 = 2 Then
  WScript.Echo "a"
ElseIf 2 = 2 Then
  WScript.Echo "b"  ' expect: b
ElseIf 3 = 3 Then
  WScript.Echo "c"
Else
  WScript.Echo "d"
End If
