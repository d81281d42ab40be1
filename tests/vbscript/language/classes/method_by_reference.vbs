Class C
  Sub Change(x)
    x = 9
  End Sub
End Class
Set o = New C
v = 1
o.Change v
WScript.Echo v  ' expect: 9
