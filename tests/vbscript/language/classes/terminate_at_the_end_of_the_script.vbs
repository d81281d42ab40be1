Class C
  Private Sub Class_Terminate
    WScript.Echo "end"  ' expect: end
  End Sub
End Class
Set o = New C
