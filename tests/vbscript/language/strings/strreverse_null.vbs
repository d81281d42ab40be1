x = StrReverse(Null)  ' error: 94
