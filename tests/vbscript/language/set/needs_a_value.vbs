Set x =  ' compile error: 1023
