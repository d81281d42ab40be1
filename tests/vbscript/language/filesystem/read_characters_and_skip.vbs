Set f = CreateObject("Scripting.FileSystemObject")
Set t = f.CreateTextFile("C:\temp\a.txt")
t.WriteLine "abcdef"
t.WriteLine "second"
t.Close
Set t = f.OpenTextFile("C:\temp\a.txt")
WScript.Echo t.Read(2)  ' expect: ab
t.Skip 1
WScript.Echo t.Read(1) & t.Column & t.Line  ' expect: d51
t.SkipLine
WScript.Echo t.ReadLine  ' expect: second
