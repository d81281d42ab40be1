x = Split(Null)  ' error: 94
