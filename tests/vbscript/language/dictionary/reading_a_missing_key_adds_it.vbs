Set d = CreateObject("Scripting.Dictionary")
WScript.Echo TypeName(d("x")) & d.Count  ' expect: Empty1
