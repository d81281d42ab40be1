Function A
End Sub  ' compile error: 1015
