Set o = New Later
WScript.Echo o.N  ' expect: 3
Class Later
  Public Property Get N
    N = 3
  End Property
End Class
