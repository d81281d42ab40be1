Set r = New RegExp
r.Pattern = "(.)\1"
WScript.Echo r.Execute("abccd")(0).Value  ' expect: cc
