Set o = Nothing
x = "a" & o  ' error: 91
