s = String(5000, "x")
t = s & "a" & Null & 5 & Empty & True & s
WScript.Echo Len(t) & " " & Mid(t, 5001, 6)  ' expect: 10006 a5True
WScript.Echo Len(s)  ' expect: 5000
