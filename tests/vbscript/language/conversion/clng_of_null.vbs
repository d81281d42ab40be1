x = CLng(Null)  ' error: 94
