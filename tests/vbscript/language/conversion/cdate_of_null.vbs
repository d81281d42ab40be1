x = CDate(Null)  ' error: 94
