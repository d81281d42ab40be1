Option Explicit
For i = 1 To 2  ' error: 500
Next
