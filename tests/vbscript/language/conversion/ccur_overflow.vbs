x = CCur(1E15)  ' error: 6
