Sub A(Optional x)  ' compile error: 1010
End Sub
