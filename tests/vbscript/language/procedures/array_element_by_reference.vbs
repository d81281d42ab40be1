Sub P(x)
  x = 7
End Sub
Dim a(2)
P a(1)
WScript.Echo a(1)  ' expect: 7
