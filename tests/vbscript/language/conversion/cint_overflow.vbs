x = CInt(32768)  ' error: 6
