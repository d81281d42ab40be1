Dim a,  ' compile error: 1010
