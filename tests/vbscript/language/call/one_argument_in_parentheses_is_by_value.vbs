Sub Change(x)
  x = 9
End Sub
v = 1
Change(v)
WScript.Echo v  ' expect: 1
Change v
WScript.Echo v  ' expect: 9
