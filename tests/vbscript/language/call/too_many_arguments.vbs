Sub P(a)
End Sub
P 1, 2  ' error: 450
