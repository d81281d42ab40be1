Sub P(x)
  x = 7
End Sub
v = 1
P v + 0
WScript.Echo v  ' expect: 1
