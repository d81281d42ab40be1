Class C
  Private Sub Class_Terminate
    trace = trace & "t"
  End Sub
End Class
trace = ""
Sub P
  Dim o
  Set o = New C
  trace = trace & "p"
End Sub
P
trace = trace & "e"
WScript.Echo trace  ' expect: pte
