On Error Resume Next
If 1 / 0 = 1 Then
  WScript.Echo "inside"  ' expect: inside
Else
  WScript.Echo "else"
End If
WScript.Echo "after"  ' expect: after
