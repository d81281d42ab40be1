Class C
  Sub Class_Terminate(x)  ' compile error: 1053
  End Sub
End Class
