Set r = New RegExp
r.Pattern = "(a"
x = r.Test("a")  ' error: 5020
