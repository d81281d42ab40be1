Sub Change(x)
  x = 9
End Sub
Set f = GetRef("Change")
v = 1
f v
WScript.Echo v  ' expect: 9
