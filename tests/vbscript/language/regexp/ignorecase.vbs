Set r = New RegExp
r.Pattern = "ABC"
r.IgnoreCase = True
WScript.Echo "" & r.Test("xabcx")  ' expect: True
