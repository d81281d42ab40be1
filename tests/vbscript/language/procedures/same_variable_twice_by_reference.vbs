Sub P(a, b)
  a = 5
  WScript.Echo b  ' expect: 5
End Sub
v = 1
P v, v
