Sub P(x)
  x = 7
End Sub
a = Array(Array(1, 2), Array(3, 4))
P a(1)(0)
WScript.Echo a(1)(0)  ' expect: 7
