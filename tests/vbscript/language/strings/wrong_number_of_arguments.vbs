x = Left("abc")  ' error: 450
