Sub P(ByRef x)
  x = x + 1
End Sub
v = 1
P v
WScript.Echo v  ' expect: 2
