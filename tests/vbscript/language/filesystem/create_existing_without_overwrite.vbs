Set f = CreateObject("Scripting.FileSystemObject")
f.CreateTextFile("C:\temp\a.txt").Close
Set t = f.CreateTextFile("C:\temp\a.txt", False)  ' error: 58
