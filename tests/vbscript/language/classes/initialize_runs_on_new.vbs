Class C
  Public N
  Private Sub Class_Initialize
    N = 5
  End Sub
End Class
Set o = New C
WScript.Echo o.N  ' expect: 5
