Class Inner
  Private Sub Class_Terminate
    trace = trace & "i"
  End Sub
End Class
Class Outer
  Private m
  Private Sub Class_Initialize
    Set m = New Inner
  End Sub
  Private Sub Class_Terminate
    trace = trace & "o"
  End Sub
End Class
trace = ""
Set o = New Outer
Set o = Nothing
WScript.Echo trace  ' expect: oi
