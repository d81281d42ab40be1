Set r = New RegExp
r.Pattern = "\bcat\b"
WScript.Echo r.Test("a cat sat") & r.Test("concat")  ' expect: TrueFalse
