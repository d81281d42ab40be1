Set a = Nothing
a.X = 1  ' error: 91
