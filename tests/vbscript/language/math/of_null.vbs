x = Sin(Null)  ' error: 94
