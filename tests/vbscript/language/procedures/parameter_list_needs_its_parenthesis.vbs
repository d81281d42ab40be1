Sub A(x  ' compile error: 1006
End Sub
