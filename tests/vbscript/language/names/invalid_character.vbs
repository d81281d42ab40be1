x = 1 ? 2  ' compile error: 1032
