x = 1
Const N = x  ' compile error: 1045
