Class C
  Public Default Function F(a, b)
    F = a & "-" & b
  End Function
End Class
Set o = New C
WScript.Echo o(1, 2)  ' expect: 1-2
