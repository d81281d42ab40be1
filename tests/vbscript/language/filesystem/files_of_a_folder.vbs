Set f = CreateObject("Scripting.FileSystemObject")
f.CreateTextFile("C:\temp\a.txt").Close
f.CreateTextFile("C:\temp\b.txt").Close
For Each x In f.GetFolder("C:\temp").Files
  n = n + 1
  s = s & x.Name
Next
WScript.Echo n & " " & Len(s)  ' expect: 2 10
