Set r = New RegExp
r.Pattern = "(?:a)(b)"
WScript.Echo r.Execute("ab")(0).SubMatches(0)  ' expect: b
