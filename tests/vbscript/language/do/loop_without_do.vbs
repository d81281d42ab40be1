x = 1
Loop  ' compile error: 1038
