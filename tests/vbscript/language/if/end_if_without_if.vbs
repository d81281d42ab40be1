End If  ' compile error: 1024
