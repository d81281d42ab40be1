Set f = CreateObject("Scripting.FileSystemObject")
WScript.Echo f.BuildPath("C:\a", "b")  ' expect: C:\a\b
WScript.Echo f.BuildPath("C:\a\", "b")  ' expect: C:\a\b
WScript.Echo f.BuildPath("C:", "b")  ' expect: C:b
