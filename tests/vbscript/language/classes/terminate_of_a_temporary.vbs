Class C
  Public N
  Private Sub Class_Terminate
    trace = trace & "t"
  End Sub
End Class
trace = ""
Function Make
  Set Make = New C
End Function
x = Make.N
trace = trace & "e"
WScript.Echo trace  ' expect: te
