Sub P(a, b)
End Sub
P(1, 2)  ' compile error: 1044
