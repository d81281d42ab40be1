x = Year("abc")  ' error: 13
