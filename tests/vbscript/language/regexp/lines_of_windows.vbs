Set r = New RegExp
r.Pattern = "\s"
r.Global = True
WScript.Echo r.Execute("a" & vbCrLf & vbTab & " b").Count  ' expect: 4
