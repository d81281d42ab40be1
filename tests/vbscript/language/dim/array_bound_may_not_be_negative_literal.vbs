Dim a(-1)  ' compile error: 1026
