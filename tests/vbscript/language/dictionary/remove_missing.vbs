Set d = CreateObject("Scripting.Dictionary")
d.Remove "a"  ' error: 32811
