Sub  ' compile error: 1010
End Sub
