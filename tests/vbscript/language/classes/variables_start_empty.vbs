Class C
  Public N
End Class
Set o = New C
WScript.Echo TypeName(o.N)  ' expect: Empty
