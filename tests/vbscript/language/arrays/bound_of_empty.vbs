x = UBound(Empty)  ' error: 13
