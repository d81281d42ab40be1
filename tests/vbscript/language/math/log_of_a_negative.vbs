x = Log(-1)  ' error: 5
