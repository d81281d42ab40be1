Class C
End Class
Set o = New C
x = "" & o  ' error: 438
