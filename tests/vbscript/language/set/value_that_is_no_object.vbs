Set a = 5  ' error: 424
