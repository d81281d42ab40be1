x = RGB(-1, 0, 0)  ' error: 5
