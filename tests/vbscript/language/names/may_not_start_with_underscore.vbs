_a = 1  ' compile error: 1032
