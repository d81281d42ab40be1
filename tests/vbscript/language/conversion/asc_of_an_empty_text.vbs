x = Asc("")  ' error: 5
