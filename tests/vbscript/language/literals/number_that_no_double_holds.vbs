x = 1E400  ' compile error: 1031 @5
