x = CStr(Null)  ' error: 94
