x = "" + 1  ' error: 13
