x = &H123456789  ' compile error: 1031 @5
