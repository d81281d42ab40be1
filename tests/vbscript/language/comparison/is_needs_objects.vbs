x = (1 Is 1)  ' error: 424
