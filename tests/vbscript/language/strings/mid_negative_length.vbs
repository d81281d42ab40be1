x = Mid("abc", 1, -1)  ' error: 5
