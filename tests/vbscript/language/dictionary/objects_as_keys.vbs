Set d = CreateObject("Scripting.Dictionary")
Set k = New RegExp
d.Add k, 5
WScript.Echo d(k) & d.Exists(k)  ' expect: 5True
