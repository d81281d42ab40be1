Select 5  ' compile error: 1021
End Select
