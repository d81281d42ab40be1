x = 5
y = x(1)  ' error: 13 Type mismatch: 'x'
