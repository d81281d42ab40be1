Dim a
Dim A  ' compile error: 1041
