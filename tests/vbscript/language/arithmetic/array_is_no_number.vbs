x = Array(1) + 1  ' error: 13
