x = CStr(Array())  ' error: 13
