x = 1E10 \ 2  ' error: 6
