Dim  ' compile error: 1010
