x = CInt("")  ' error: 13
