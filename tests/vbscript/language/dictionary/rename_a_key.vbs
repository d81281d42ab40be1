Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d.Key("a") = "b"
WScript.Echo d.Exists("a") & d("b")  ' expect: False1
