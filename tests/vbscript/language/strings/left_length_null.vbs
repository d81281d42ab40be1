x = Left("abc", Null)  ' error: 94
