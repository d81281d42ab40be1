s = "abc"
x = (s = 1)  ' error: 13
