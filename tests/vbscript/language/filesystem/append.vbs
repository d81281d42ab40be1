Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.Write "a"
t.Close
Set t = f.OpenTextFile("C:\temp\a.txt", 8)
t.Write "b"
t.Close
WScript.Echo f.OpenTextFile("C:\temp\a.txt").ReadAll  ' expect: ab
