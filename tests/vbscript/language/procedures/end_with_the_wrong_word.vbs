Sub A
End Function  ' compile error: 1016
