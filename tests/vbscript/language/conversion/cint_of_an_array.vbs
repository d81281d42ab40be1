x = CInt(Array(1))  ' error: 13
