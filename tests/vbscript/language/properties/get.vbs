Class C
  Public Property Get P
    P = 5
  End Property
End Class
Set o = New C
WScript.Echo o.P  ' expect: 5
