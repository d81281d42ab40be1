x = CBool(Null)  ' error: 94
