Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.GetFolder("C:\temp\none")  ' error: 76
