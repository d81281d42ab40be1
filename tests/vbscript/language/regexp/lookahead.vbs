Set r = New RegExp
r.Pattern = "\w+(?=!)"
WScript.Echo r.Execute("hi there!")(0).Value  ' expect: there
r.Pattern = "a(?!b)"
WScript.Echo r.Execute("abac")(0).FirstIndex  ' expect: 2
