Set r = New RegExp
r.Pattern = "\d+"
Set m = r.Execute("a12b345")
WScript.Echo m.Count & m(0) & m(0).Value & m(0).FirstIndex & m(0).Length  ' expect: 1121212
