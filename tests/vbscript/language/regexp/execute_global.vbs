Set r = New RegExp
r.Pattern = "\d+"
r.Global = True
Set m = r.Execute("a12b345")
WScript.Echo m.Count & " " & m(1).Value & " " & m(1).FirstIndex & " " & m.Item(1).Length  ' expect: 2 345 4 3
