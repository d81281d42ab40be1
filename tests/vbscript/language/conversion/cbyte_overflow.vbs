x = CByte(256)  ' error: 6
