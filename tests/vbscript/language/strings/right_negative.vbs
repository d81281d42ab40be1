x = Right("abc", -1)  ' error: 5
