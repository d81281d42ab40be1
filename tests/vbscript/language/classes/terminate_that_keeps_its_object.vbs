Dim kept, ends
Class C
  Public v
  Private Sub Class_Terminate
    ends = ends + 1
    v = "alive"
    Set kept = Me
  End Sub
End Class
Set o = New C
Set o = Nothing
WScript.Echo TypeName(kept) & " " & kept.v  ' expect: C alive
Set kept = Nothing
WScript.Echo ends  ' expect: 1
