On Error Resume Next
x = 1 / 0
On Error GoTo 0
x = 1 / 0  ' error: 11
