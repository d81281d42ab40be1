x = 1e+  ' compile error: 1031 @5
