Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.GetFile("C:\temp\none.txt")  ' error: 53
