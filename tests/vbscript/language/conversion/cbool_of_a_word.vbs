x = CBool("yes")  ' error: 13
