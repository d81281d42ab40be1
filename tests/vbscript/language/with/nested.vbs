Class C
  Public N
End Class
Set a = New C
Set b = New C
With a
  .N = 1
  With b
    .N = 2
  End With
  .N = .N + 10
End With
WScript.Echo a.N & " " & b.N  ' expect: 11 2
