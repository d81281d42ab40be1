Dim a(2)
For a(1) = 1 To 2  ' compile error: 1040
Next
