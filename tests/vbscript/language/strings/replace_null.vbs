x = Replace(Null, "a", "b")  ' error: 94
