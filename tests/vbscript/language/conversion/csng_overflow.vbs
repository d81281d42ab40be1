x = CSng(1E39)  ' error: 6
