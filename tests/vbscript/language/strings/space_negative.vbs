x = Space(-1)  ' error: 5
