Set f = CreateObject("Scripting.FileSystemObject")
WScript.Echo f.GetFileName("C:\a\b.txt")  ' expect: b.txt
WScript.Echo f.GetBaseName("C:\a\b.txt")  ' expect: b
WScript.Echo f.GetExtensionName("C:\a\b.txt")  ' expect: txt
WScript.Echo f.GetParentFolderName("C:\a\b.txt")  ' expect: C:\a
WScript.Echo f.GetDriveName("C:\a\b.txt")  ' expect: C:
