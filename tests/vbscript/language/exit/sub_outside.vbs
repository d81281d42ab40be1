Exit Sub  ' compile error: 1039
