Set d = New RegExp
x = d  ' error: 438
