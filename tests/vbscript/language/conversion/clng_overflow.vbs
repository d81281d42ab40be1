x = CLng(2147483648)  ' error: 6
