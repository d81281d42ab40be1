Set o = Nothing
x = o + 1  ' error: 91
