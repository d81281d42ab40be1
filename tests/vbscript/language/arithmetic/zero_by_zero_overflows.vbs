x = 0 / 0  ' error: 6
