x = CDbl(Null)  ' error: 94
