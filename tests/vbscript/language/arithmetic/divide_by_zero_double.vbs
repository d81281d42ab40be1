x = 1.5 / 0.0  ' error: 11
