x = CInt(-32769)  ' error: 6
