For i = To 3  ' compile error: 1023 @9
Next
