Class C
End Class
x = (New C = New C)  ' error: 438
