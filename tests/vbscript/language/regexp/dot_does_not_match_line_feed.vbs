Set r = New RegExp
r.Pattern = "a.b"
WScript.Echo "" & r.Test("a" & vbLf & "b")  ' expect: False
