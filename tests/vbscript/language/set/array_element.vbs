Class C
  Public N
End Class
Dim a(1)
Set a(0) = New C
a(0).N = 4
WScript.Echo a(0).N  ' expect: 4
