Class C
  Public N
  Private Sub Class_Terminate
    log = log & N
  End Sub
End Class
log = ""
Set a = New C
a.N = "a"
Set a = Nothing
log = log & "1"
Set b = New C
b.N = "b"
b = 5
log = log & "2"
WScript.Echo log  ' expect: a1b2
