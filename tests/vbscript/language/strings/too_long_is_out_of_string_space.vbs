x = String(2147483647, "x")  ' error: 14
