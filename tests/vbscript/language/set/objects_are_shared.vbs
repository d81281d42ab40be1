Class C
  Public N
End Class
Set a = New C
Set b = a
b.N = 3
WScript.Echo a.N & (a Is b)  ' expect: 3True
