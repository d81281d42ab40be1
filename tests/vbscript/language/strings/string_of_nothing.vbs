x = String(3, "")  ' error: 5
