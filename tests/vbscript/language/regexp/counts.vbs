Set r = New RegExp
r.Pattern = "^a{2,3}$"
WScript.Echo r.Test("a") & r.Test("aa") & r.Test("aaa") & r.Test("aaaa")  ' expect: FalseTrueTrueFalse
