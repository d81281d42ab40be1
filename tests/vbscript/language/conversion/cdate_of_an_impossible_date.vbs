x = CDate("2/30/2003")  ' error: 13
