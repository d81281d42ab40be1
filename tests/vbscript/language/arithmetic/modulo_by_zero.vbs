x = 1 Mod 0  ' error: 11
