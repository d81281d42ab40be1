For i  ' compile error: 1011
Next
