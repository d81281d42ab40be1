Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d.RemoveAll
WScript.Echo d.Count  ' expect: 0
