Option Explicit
Dim fso, folder, b, p, n, text
Set fso = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1)
WriteProject "Lib", "OleDll", ""
WriteProject "App", "Exe", "Reference=*\ALib.vbp" & vbCrLf
WriteProject "Tool", "Exe", ""
Set b = CreateObject("Hearthmake.Build")
b.BeginEdit
b.Name = "Shop"
b.ApplyEdit
Set p = b.Projects.Add(folder & "\App.vbp")
WScript.Echo p & " " & p.Name & " " & p.Id & " " & TypeName(p.Id) ' expect: App App 1 Long
b.Projects.Add folder & "\Lib.vbp"
b.Projects.Add folder & "\Tool.vbp"
WScript.Echo b.Projects.Count ' expect: 3
' An index on the property reaches the default member of the collection; a number is a position, a text a key.
WScript.Echo b.Projects(1).Name & " " & b.Projects.item(3).Name & " " & b.Projects("2").Name ' expect: App Tool Lib
WScript.Echo b.projects.GETBYNAME("Tool").id ' expect: 3
For Each p In b.Projects
  text = text & p.Name & ";"
Next
WScript.Echo text ' expect: App;Lib;Tool;
b.AutoDetectReferences
b.Projects.SetCompileOrder
text = ""
For n = 1 To b.Projects.Count
  text = text & b.Projects(n) & ";"
Next
WScript.Echo text ' expect: Lib;App;Tool;
WScript.Echo b.Projects.GetByName("App").References.Count ' expect: 1
WScript.Echo b.Projects.GetByName("App").References(1).IsExternal ' expect: 0
WScript.Echo b.Projects.GetByName("App").References(1).ReferencedProject ' expect: 2

On Error Resume Next
Set p = b.Projects(4)
WScript.Echo Err.Number ' expect: 9
Err.Clear
Set p = b.Projects("App")
WScript.Echo Err.Number ' expect: 5
Err.Clear
Set p = b.Projects.GetByName("Nosuch")
WScript.Echo Err.Number ' expect: 5
Err.Clear
b.Projects.Add folder & "\Lib.vbp"
WScript.Echo Hex(Err.Number) & "|" & Err.Source & "|" & Err.Description ' expect: 80040006|Projects.Add|A project with the same name, Lib, is already part of this build
Err.Clear
b.Projects.Add folder & "\Nosuch.vbp"
WScript.Echo Err.Number ' expect: 53
Err.Clear
Set p = b.Projects.GetByName("Lib")
p.BeginEdit
p.Delete
p.ApplyEdit
WScript.Echo Hex(Err.Number) & "|" & Err.Source & "|" & Err.Description ' expect: 80040005|Project.Delete|Project is referenced by other projects
b.Kill

Sub WriteProject(name, kind, rows)
  With fso.CreateTextFile(folder & "\" & name & ".vbp", True)
    .Write "Type=" & kind & vbCrLf & rows & "Startup=""(None)""" & vbCrLf & "Name=""" & name & """" & vbCrLf & "MajorVer=1" & vbCrLf & "MinorVer=0" & vbCrLf
    .Close
  End With
End Sub
