Class C
  Public A
End Class
Function Make()
  count = count + 1
  Set Make = New C
End Function
count = 0
With Make()
  .A = 1
  .A = .A + 1
  WScript.Echo .A & count  ' expect: 21
End With
