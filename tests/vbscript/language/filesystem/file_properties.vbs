Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.Write "12345"
t.Close
Set x = f.GetFile("C:\temp\a.txt")
WScript.Echo x.Name & x.Size & " " & x.Path  ' expect: a.txt5 C:\temp\a.txt
WScript.Echo x.ParentFolder.Path  ' expect: C:\temp
