Set f = CreateObject("Scripting.FileSystemObject")
f.DeleteFile "C:\temp\a.txt"  ' error: 53
