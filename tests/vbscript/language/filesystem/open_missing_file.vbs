Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.OpenTextFile("C:\temp\none.txt")  ' error: 53
