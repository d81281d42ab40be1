x = 5
Erase x  ' error: 13
