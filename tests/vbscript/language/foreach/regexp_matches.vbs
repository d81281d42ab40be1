Set r = New RegExp
r.Pattern = "\d"
r.Global = True
For Each m In r.Execute("a1b2")
  s = s & m.Value
Next
WScript.Echo s  ' expect: 12
