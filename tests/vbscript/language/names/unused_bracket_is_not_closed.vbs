x = [abc  ' compile error: 1007
