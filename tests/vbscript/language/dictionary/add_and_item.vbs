Set d = CreateObject("Scripting.Dictionary")
d.Add "a", 1
WScript.Echo d.Item("a") & d("a") & d.Count  ' expect: 111
