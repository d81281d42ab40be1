Option Explicit
x = 1  ' error: 500 Variable is undefined: 'x'
