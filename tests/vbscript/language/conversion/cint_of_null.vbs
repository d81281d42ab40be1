x = CInt(Null)  ' error: 94
