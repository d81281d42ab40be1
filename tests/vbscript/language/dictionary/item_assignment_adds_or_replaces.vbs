Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d("a") = 2
WScript.Echo d("a") & d.Count  ' expect: 21
