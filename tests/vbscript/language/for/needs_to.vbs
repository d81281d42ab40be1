For i = 1  ' compile error: 1013
Next
