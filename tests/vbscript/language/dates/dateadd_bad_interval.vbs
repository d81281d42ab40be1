x = DateAdd("x", 1, #1/1/2003#)  ' error: 5
