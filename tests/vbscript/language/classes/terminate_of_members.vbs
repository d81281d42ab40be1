Class Inner
  Private Sub Class_Terminate
    log = log & "i"
  End Sub
End Class
Class Outer
  Private m
  Private Sub Class_Initialize
    Set m = New Inner
  End Sub
  Private Sub Class_Terminate
    log = log & "o"
  End Sub
End Class
log = ""
Set o = New Outer
Set o = Nothing
WScript.Echo log  ' expect: oi
