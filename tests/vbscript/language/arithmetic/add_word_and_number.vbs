x = "a" + 1  ' error: 13
