Class C
  Public o
  Private Sub Class_Initialize
    Set o = New C
  End Sub
End Class
On Error Resume Next
Set o = New C
WScript.Echo Err.Number  ' expect: 28
