Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
WScript.Echo d.Exists("a") & d.Exists("b") & d.Count  ' expect: TrueFalse1
