Class C
  Public Property Get P
    P = 1
    Exit Property
    P = 2
  End Property
End Class
WScript.Echo (New C).P  ' expect: 1
