Do While True
Loop While True  ' compile error: 1025
