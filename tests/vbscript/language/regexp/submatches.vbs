Set r = New RegExp
r.Pattern = "(\w+)@(\w+)"
Set m = r.Execute("me@home")(0)
WScript.Echo m.SubMatches.Count & m.SubMatches(0) & m.SubMatches(1)  ' expect: 2mehome
