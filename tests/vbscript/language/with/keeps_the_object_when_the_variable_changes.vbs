Class C
  Public N
End Class
Set a = New C
a.N = 5
With a
  Set a = Nothing
  WScript.Echo .N  ' expect: 5
End With
