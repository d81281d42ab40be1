WScript.Echo TypeName(CreateObject("Scripting.Dictionary"))  ' expect: Dictionary
WScript.Echo TypeName(CreateObject("Scripting.FileSystemObject"))  ' expect: FileSystemObject
