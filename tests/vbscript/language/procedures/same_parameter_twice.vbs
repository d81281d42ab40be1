Sub A(x, x)  ' compile error: 1041
End Sub
