Class C
  Public N
End Class
Sub P(x)
  x = 9
End Sub
Set o = New C
o.N = 1
P o.N
WScript.Echo o.N  ' expect: 1
