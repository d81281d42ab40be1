Set r = New RegExp
r.Pattern = "x"
WScript.Echo r.Execute("abc").Count  ' expect: 0
