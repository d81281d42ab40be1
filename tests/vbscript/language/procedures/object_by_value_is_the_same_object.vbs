Class C
  Public N
End Class
Sub P(ByVal o)
  o.N = 2
  Set o = Nothing
End Sub
Set c1 = New C
P c1
WScript.Echo c1.N  ' expect: 2
