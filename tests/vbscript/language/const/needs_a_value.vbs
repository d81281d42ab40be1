Const N  ' compile error: 1011
