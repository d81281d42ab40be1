x = Log(0)  ' error: 5
