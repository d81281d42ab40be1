' needs event handlers
Option Explicit
Dim fso, folder, b, settings, stopAt
Set fso = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1)
WriteProject "One", "Exe"
WriteProject "Two", "Exe"
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.VBExe = WScript.Arguments(0)
settings.RunScripts = True
settings.ApplyEdit
Set b = WScript.CreateObject("Hearthmake.Build", "Build_")
b.BeginEdit
b.Name = "Run"
b.ApplyEdit
b.Projects.Add folder & "\One.vbp"
b.Projects.Add folder & "\Two.vbp"
With b.Scripts
  .BeforeComplie = "Dim n : n = 0" & vbCrLf & "Scripts.Notify ""before %Build.Name%"""
  .BeforeProjectComplie = "n = n + 1 : Scripts.Notify n & "" before "" & Project.Name, , 200"
  .AfterProjectCompile = "Scripts.Notify ""after "" & Project().Name"
  .CompileComplete = "Dim stop_ : stop_ = False : Scripts.Notify ""done "" & n, stop_, 50 : Scripts.Notify ""answer "" & stop_"
  .BuildFailed = "Scripts.Notify ""failed"""
End With
WScript.Echo b.Projects.Build(False)
' expect: 0 before Run
' expect: 100 1 before One
' expect: 0 after One
' expect: 100 2 before Two
' expect: 0 after Two
' expect: 50 done 2
' expect: 0 answer True
' expect: -1

' An error in a script fails the run, unless such errors are to be ignored.
b.Scripts.AfterProjectCompile = "Nosuch.Thing"
WScript.Echo b.Projects.Build(False)
' expect: 0 before Run
' expect: 100 1 before One
' expect: failed One Script Error: Object required: 'Nosuch'
' expect: 0 failed
' expect: 0
settings.IgnoreScriptError = True
settings.ApplyEdit
b.Scripts.BeforeProjectComplie = ""
b.Scripts.CompileComplete = ""
Set b = Reloaded(b)
WScript.Echo b.Projects.Build(False)
' expect: 0 before Run
' expect: error Script error in event After Project Compile. Object required: 'Nosuch'
' expect: error Script error in event After Project Compile. Object required: 'Nosuch'
' expect: -1

Sub Build_ScriptNotify(message, cancel, progress)
  WScript.Echo progress & " " & message
  If progress = 50 Then cancel = True
End Sub
Sub Build_BuildFaild(project, message, isCompileError)
  WScript.Echo "failed " & project.Name & " " & Split(message, vbCrLf)(0)
End Sub
Sub Build_Error(message)
  WScript.Echo "error " & message
End Sub

Function Reloaded(build)
  build.Scripts.Save
  Set Reloaded = WScript.CreateObject("Hearthmake.Build", "Build_")
  Reloaded.Load build.Id
  build.Kill
End Function
Sub WriteProject(name, kind)
  With fso.CreateTextFile(folder & "\" & name & ".vbp", True)
    .Write "Type=" & kind & vbCrLf & "Startup=""(None)""" & vbCrLf & "Name=""" & name & """" & vbCrLf & "MajorVer=1" & vbCrLf & "MinorVer=0" & vbCrLf
    .Close
  End With
End Sub
