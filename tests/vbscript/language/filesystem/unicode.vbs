Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt", True, True)
t.Write ChrW(955)
t.Close
WScript.Echo f.GetFile("C:\temp\a.txt").Size  ' expect: 4
WScript.Echo AscW(f.OpenTextFile("C:\temp\a.txt", 1, False, -1).ReadAll)  ' expect: 955
