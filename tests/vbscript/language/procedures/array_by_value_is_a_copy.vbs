Sub P(ByVal x)
  x(0) = 9
End Sub
a = Array(1)
P a
WScript.Echo a(0)  ' expect: 1
