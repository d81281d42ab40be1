Function Say(n)
  WScript.Echo n  ' expect: 1 | 2
  Say = (n = 2)
End Function
If Say(1) Then
ElseIf Say(2) Then
ElseIf Say(3) Then
End If
