x = Replace("abc", "a", "b", 0)  ' error: 5
