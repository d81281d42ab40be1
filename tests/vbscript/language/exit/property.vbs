Class C
  Public Property Get P
    P = 1
    Exit Property
    P = 2
  End Property
End Class
Set o = New C
WScript.Echo o.P  ' expect: 1
