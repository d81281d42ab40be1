Set a New C  ' compile error: 1011
