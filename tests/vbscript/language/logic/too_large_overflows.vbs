x = 1E10 And 1  ' error: 6
