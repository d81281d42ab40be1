Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.Write "x"
t.Close
f.CopyFile "C:\temp\a.txt", "C:\temp\b.txt"
f.MoveFile "C:\temp\a.txt", "C:\temp\c.txt"
WScript.Echo f.FileExists("C:\temp\a.txt") & f.FileExists("C:\temp\b.txt") & f.FileExists("C:\temp\c.txt")  ' expect: FalseTrueTrue
