Class C
  Public N
  Sub Class_Terminate
    WScript.Echo "gone"  ' expect: gone
  End Sub
End Class
With New C
  .N = 1
End With
WScript.Echo "after"  ' expect: after
