Class C
  Private Sub Class_Terminate
    WScript.Echo "gone"  ' expect: gone
  End Sub
End Class
Set a = New C
Set b = a
Set a = Nothing
WScript.Echo "still there"  ' expect: still there
Set b = Nothing
