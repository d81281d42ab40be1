Set f = CreateObject("Scripting.FileSystemObject")
f.CreateTextFile("C:\temp\a.txt").Close
Set t = f.OpenTextFile("C:\temp\a.txt")
t.Write "x"  ' error: 54
