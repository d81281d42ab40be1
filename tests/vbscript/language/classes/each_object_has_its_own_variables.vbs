Class C
  Public N
End Class
Set a = New C
Set b = New C
a.N = 1
b.N = 2
WScript.Echo a.N & b.N  ' expect: 12
