x = CInt("abc")  ' error: 13 Type mismatch: 'CInt'
