Set f = CreateObject("Scripting.FileSystemObject")
f.CreateFolder "C:\temp\sub"
f.CreateFolder "C:\temp\sub"  ' error: 58
