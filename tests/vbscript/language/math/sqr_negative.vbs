x = Sqr(-1)  ' error: 5
