Const N = 1
Const N = 2  ' compile error: 1041
