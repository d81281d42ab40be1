Set r = New RegExp
r.Pattern = "x*"
r.Global = True
WScript.Echo r.Replace("abc", "-")  ' expect: -a-b-c-
