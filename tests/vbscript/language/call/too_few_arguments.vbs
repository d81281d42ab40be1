Sub P(a, b)
End Sub
P 1  ' error: 450
