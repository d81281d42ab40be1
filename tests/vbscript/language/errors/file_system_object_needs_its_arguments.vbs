On Error Resume Next
Set fso = CreateObject("Scripting.FileSystemObject")
fso.FileExists
WScript.Echo Err.Number  ' expect: 449
