x = String(-1, "x")  ' error: 5
