ReDim  ' compile error: 1010
