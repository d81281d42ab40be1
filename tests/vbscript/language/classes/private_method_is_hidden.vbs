Class C
  Private Sub S
  End Sub
End Class
Set o = New C
o.S  ' error: 438
