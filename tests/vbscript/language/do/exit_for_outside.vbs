Exit For  ' compile error: 1039
