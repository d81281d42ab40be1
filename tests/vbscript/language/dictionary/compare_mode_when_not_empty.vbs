Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d.CompareMode = 1  ' error: 5
