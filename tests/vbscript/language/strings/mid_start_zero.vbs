x = Mid("abc", 0)  ' error: 5
