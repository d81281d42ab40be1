Option Explicit
Dim y
y = x  ' error: 500 Variable is undefined: 'x'
