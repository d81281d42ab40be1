Class C
End Class
For Each x In New C  ' error: 438
Next
