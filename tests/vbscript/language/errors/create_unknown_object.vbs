Set o = CreateObject("No.Such.Thing")  ' error: 429
