x = InStr(0, "abc", "a")  ' error: 5
