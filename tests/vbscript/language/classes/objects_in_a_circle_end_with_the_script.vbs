Class N
  Public other
  Private Sub Class_Terminate
    WScript.Echo "gone"  ' expect: gone | gone
  End Sub
End Class
Set a = New N
Set b = New N
Set a.other = b
Set b.other = a
