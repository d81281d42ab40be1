Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.WriteBlankLines 2
t.Close
WScript.Echo f.GetFile("C:\temp\a.txt").Size  ' expect: 4
