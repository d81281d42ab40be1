Class C
  Public N
  Private Sub Class_Terminate
    trace = trace & N
  End Sub
End Class
trace = ""
Set a = New C
a.N = "a"
Set a = Nothing
trace = trace & "1"
Set b = New C
b.N = "b"
b = 5
trace = trace & "2"
WScript.Echo trace  ' expect: a1b2
