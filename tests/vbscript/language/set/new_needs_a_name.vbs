Set a = New  ' compile error: 1010
