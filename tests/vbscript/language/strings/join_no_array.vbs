x = Join("a")  ' error: 13
