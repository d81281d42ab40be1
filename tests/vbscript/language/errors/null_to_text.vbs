x = CStr(Null)  ' error: 94 Invalid use of Null: 'CStr'
