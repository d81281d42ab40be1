Class C
  Public N
  Function Self
    Set Self = Me
  End Function
  Sub Change
    Me.N = 3
  End Sub
End Class
Set o = New C
o.Change
WScript.Echo o.N & (o.Self Is o)  ' expect: 3True
