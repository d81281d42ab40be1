x = CInt("abc")  ' error: 13
