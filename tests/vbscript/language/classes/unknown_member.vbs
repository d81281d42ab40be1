Class C
End Class
Set o = New C
o.Missing  ' error: 438
