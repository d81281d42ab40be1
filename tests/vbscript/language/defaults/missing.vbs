Class C
End Class
Set o = New C
x = o + 1  ' error: 438
