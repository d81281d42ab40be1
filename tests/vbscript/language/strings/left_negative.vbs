x = Left("abc", -1)  ' error: 5
