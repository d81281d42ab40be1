Class C
  Sub Class_Initialize
    Err.Raise 1234
  End Sub
End Class
On Error Resume Next
Set o = New C
WScript.Echo Err.Number  ' expect: 1234
