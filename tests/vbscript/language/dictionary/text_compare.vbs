Set d = CreateObject("Scripting.Dictionary")
d.CompareMode = vbTextCompare
d("a") = 1
d("A") = 2
WScript.Echo d.Count & d("a")  ' expect: 12
