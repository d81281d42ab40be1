Log = 1  ' error: 501
