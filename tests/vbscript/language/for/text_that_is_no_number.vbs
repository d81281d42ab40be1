For i = "a" To 3  ' error: 13
Next
