Set f = CreateObject("Scripting.FileSystemObject")
f.CreateFolder "C:\temp\sub"
WScript.Echo "" & f.FolderExists("C:\temp\sub")  ' expect: True
WScript.Echo f.GetFolder("C:\temp").SubFolders.Count  ' expect: 1
f.DeleteFolder "C:\temp\sub"
WScript.Echo "" & f.FolderExists("C:\temp\sub")  ' expect: False
