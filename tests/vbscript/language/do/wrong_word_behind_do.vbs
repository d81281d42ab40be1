Do If x  ' compile error: 1028
Loop
