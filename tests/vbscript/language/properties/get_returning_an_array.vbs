Class C
  Public Property Get P
    P = Array(1, 2, 3)
  End Property
End Class
Set o = New C
x = o.P
WScript.Echo x(1)  ' expect: 2
