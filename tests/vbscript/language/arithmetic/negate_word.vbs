x = -"a"  ' error: 13
