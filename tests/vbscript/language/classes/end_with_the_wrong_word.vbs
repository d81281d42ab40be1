Class C
End Sub  ' compile error: 1047
