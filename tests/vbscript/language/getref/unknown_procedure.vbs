Set f = GetRef("Missing")  ' error: 5
