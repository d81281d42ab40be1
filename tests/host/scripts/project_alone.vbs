Option Explicit
Dim fso, file, p, key, n
Set fso = CreateObject("Scripting.FileSystemObject")
file = WScript.Arguments(1) & "\Lib.vbp"
With fso.CreateTextFile(file, True)
  .Write "Type=OleDll" & vbCrLf & "Startup=""(None)""" & vbCrLf & "Name=""Lib""" & vbCrLf & "Title=""The lib""" & vbCrLf & "MajorVer=2" & vbCrLf & "MinorVer=7" & vbCrLf
  .Close
End With
Set p = CreateObject("Hearthmake.Project")
p.LoadFromFile file
WScript.Echo p.Name & " " & p.Title & " " & p.MajorVer & "." & p.MinorVer ' expect: Lib The lib 2.7
WScript.Echo p.ProjectType & " " & p.ISActiveX & " " & p.IsInprocess & " " & p.ExeName32 ' expect: 1 True True Lib.dll
p.MajorVer = 3
p.UpdateVBP
WScript.Echo InStr(fso.OpenTextFile(file).ReadAll, "MajorVer=3") > 0 ' expect: -1

' The names of the settings are a collection.
WScript.Echo TypeName(p.Properties) & " " & p.Properties.Count & " " & p.Properties(1) & " " & p.Properties.item(2) ' expect: Properties 43 Name Startup
n = 0
For Each key In p.Properties
  n = n + Len(key)
Next
WScript.Echo n > 43 ' expect: -1

On Error Resume Next
p.MajorVer = 10000
WScript.Echo Err.Number & "|" & Err.Source & "|" & Err.Description ' expect: 45|Project.MajorVer|Version number must be in range 0 to 9999
WScript.Echo p.LastErrorMessage ' expect: Version number must be in range 0 to 9999
Err.Clear
p.BeginEdit
p.ApplyEdit
WScript.Echo Err.Number ' expect: 91
Err.Clear
p.Compile
WScript.Echo Err.Number <> 0 ' expect: -1
