x = Mid("abc", 0)  ' error: 5 Invalid procedure call or argument: 'Mid'
