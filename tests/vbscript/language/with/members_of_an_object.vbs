Class C
  Public A, B
End Class
Set o = New C
With o
  .A = 1
  .B = .A + 1
End With
WScript.Echo o.A & o.B  ' expect: 12
