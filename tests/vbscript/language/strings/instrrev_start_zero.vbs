x = InStrRev("abc", "a", 0)  ' error: 5
