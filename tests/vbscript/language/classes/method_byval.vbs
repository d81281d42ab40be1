Class C
  Sub Change(ByVal x)
    x = 9
  End Sub
End Class
Set o = New C
v = 1
o.Change v
WScript.Echo v  ' expect: 1
