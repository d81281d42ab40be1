x = Exp(710)  ' error: 6
