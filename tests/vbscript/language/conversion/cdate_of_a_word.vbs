x = CDate("abc")  ' error: 13
