Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d("A") = 2
WScript.Echo d.Count  ' expect: 2
