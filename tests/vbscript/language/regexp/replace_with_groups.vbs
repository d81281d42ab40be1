Set r = New RegExp
r.Pattern = "(\w+) (\w+)"
WScript.Echo r.Replace("one two", "$2 $1")  ' expect: two one
WScript.Echo r.Replace("one two", "[$&]")  ' expect: [one two]
WScript.Echo r.Replace("one two", "$$")  ' expect: $
