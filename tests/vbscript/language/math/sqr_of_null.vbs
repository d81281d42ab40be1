x = Sqr(Null)  ' error: 94
