x = CDate(3000000)  ' error: 6
