Sub P
End Sub
P = 1  ' error: 501
