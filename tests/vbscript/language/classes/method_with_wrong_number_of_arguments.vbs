Class C
  Sub S(a)
  End Sub
End Class
Set o = New C
o.S 1, 2  ' error: 450
