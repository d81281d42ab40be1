Set r = New RegExp
r.Pattern = "^b"
a = r.Test("a" & vbLf & "b")
r.Multiline = True
WScript.Echo a & r.Test("a" & vbLf & "b")  ' expect: FalseTrue
