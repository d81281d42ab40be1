Class C
  Sub S
    Err.Raise 55
  End Sub
End Class
Set o = New C
On Error Resume Next
o.S
WScript.Echo Err.Number  ' expect: 55
