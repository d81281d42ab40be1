Class C
  Public N
End Class
Set o = New C
For Each x In Array(o)
  x.N = 5
Next
WScript.Echo o.N  ' expect: 5
