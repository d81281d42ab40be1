x = FormatNumber("abc")  ' error: 13
