x = "abc" And True  ' error: 13
