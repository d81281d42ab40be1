x = CInt(40000)  ' error: 6 Overflow: 'CInt'
