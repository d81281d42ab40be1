x = UBound(5)  ' error: 13
