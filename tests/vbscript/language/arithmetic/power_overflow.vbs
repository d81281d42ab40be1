x = 10 ^ 400  ' error: 6
