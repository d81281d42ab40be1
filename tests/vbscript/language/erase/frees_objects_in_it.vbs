Class C
  Sub Class_Terminate
    WScript.Echo "gone"  ' expect: gone
  End Sub
End Class
Dim a(1)
Set a(0) = New C
Erase a
WScript.Echo "erased"  ' expect: erased
