Set r = New RegExp
r.Pattern = "(a)|(b)"
Set m = r.Execute("b")(0)
WScript.Echo "[" & m.SubMatches(0) & "][" & m.SubMatches(1) & "]"  ' expect: [][b]
