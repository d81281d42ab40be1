x = (Array(1) = Array(1))  ' error: 13
