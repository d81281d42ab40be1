x = Abs("abc")  ' error: 13
