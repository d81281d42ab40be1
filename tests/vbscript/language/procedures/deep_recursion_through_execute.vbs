Sub E
  Execute "E"  ' error: 28
End Sub
E
