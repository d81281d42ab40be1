Class C
  Public N
  Private Sub Class_Terminate
    log = log & "t"
  End Sub
End Class
log = ""
Function Make
  Set Make = New C
End Function
x = Make.N
log = log & "e"
WScript.Echo log  ' expect: te
