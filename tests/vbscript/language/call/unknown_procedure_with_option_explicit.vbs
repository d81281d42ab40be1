Option Explicit
Unknown 1  ' error: 500 Variable is undefined: 'Unknown'
