Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d("b") = 2
d.Remove "a"
WScript.Echo d.Count & Join(d.Keys)  ' expect: 1b
