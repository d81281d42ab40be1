Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.WriteLine "one"
t.Close
WScript.Echo Len(f.OpenTextFile("C:\temp\a.txt").ReadAll)  ' expect: 5
