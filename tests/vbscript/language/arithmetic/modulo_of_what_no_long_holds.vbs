x = 1E10 Mod 2  ' error: 6
