Set r = New RegExp
r.Pattern = "b"
WScript.Echo r.Replace("abc", "[$`|$']")  ' expect: a[a|c]c
