Set f = CreateObject("Scripting.FileSystemObject")
f.CreateTextFile("C:\temp\a.txt").Close
f.DeleteFile "C:\temp\a.txt"
WScript.Echo "" & f.FileExists("C:\temp\a.txt")  ' expect: False
