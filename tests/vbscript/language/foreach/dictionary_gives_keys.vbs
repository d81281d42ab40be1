Set d = CreateObject("Scripting.Dictionary")
d.Add "k1", 1
d.Add "k2", 2
For Each k In d
  s = s & k
Next
WScript.Echo s  ' expect: k1k2
