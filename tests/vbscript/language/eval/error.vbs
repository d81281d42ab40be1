x = Eval("1 / 0")  ' error: 11
