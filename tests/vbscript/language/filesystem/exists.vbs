Set f = CreateObject("Scripting.FileSystemObject")
f.CreateTextFile("C:\temp\a.txt").Close
WScript.Echo f.FileExists("C:\temp\A.TXT") & f.FileExists("C:\temp") & f.FolderExists("C:\temp")  ' expect: TrueFalseTrue
