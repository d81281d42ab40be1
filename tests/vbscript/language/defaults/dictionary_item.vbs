Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
WScript.Echo d("a") & d.Item("a")  ' expect: 11
