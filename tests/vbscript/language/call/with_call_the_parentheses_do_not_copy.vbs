Sub Change(x)
  x = 9
End Sub
v = 1
Call Change(v)
WScript.Echo v  ' expect: 9
