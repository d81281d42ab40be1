Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.WriteLine "one"
t.Write "two"
t.Close
Set t = f.OpenTextFile("C:\temp\a.txt", 1)
WScript.Echo t.ReadLine  ' expect: one
WScript.Echo "" & t.AtEndOfStream  ' expect: False
WScript.Echo t.ReadLine & t.AtEndOfStream  ' expect: twoTrue
