Class C
  Private Sub Class_Terminate
    log = log & "t"
  End Sub
End Class
log = ""
Sub P
  Dim o
  Set o = New C
  log = log & "p"
End Sub
P
log = log & "e"
WScript.Echo log  ' expect: pte
