G = 7
Class C
  Function F
    F = G
  End Function
End Class
Set o = New C
WScript.Echo o.F  ' expect: 7
