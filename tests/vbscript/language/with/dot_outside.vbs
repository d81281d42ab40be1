.X = 1  ' compile error: 505
