Option Explicit
' What is taken out of a build keeps it alive.
Dim fso, project
Set fso = CreateObject("Scripting.FileSystemObject")
With fso.CreateTextFile(WScript.Arguments(1) & "\Lib.vbp", True)
  .Write "Type=OleDll" & vbCrLf & "Startup=""(None)""" & vbCrLf & "Name=""Lib""" & vbCrLf
  .Close
End With
Set project = MakeProject()
project.BeginEdit
project.CompileMe = False
project.ApplyEdit
WScript.Echo project.Name & " " & project.CompileMe & " " & StoredFlag() ' expect: Lib False False

Function MakeProject()
  Dim b
  Set b = CreateObject("Hearthmake.Build")
  b.BeginEdit
  b.Name = "Short"
  b.ApplyEdit
  Set MakeProject = b.Projects.Add(WScript.Arguments(1) & "\Lib.vbp")
End Function

Function StoredFlag()
  Dim b
  Set b = CreateObject("Hearthmake.Build")
  b.Load 1
  StoredFlag = b.Projects(1).CompileMe
End Function
