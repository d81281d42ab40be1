x = DateValue("abc")  ' error: 13
