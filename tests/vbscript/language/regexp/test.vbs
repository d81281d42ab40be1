Set r = New RegExp
r.Pattern = "b+"
WScript.Echo r.Test("abbc") & r.Test("ac")  ' expect: TrueFalse
