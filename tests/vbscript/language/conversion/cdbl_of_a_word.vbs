x = CDbl("abc")  ' error: 13
