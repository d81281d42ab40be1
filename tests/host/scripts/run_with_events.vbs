' needs event handlers
Option Explicit
Dim fso, folder, b, cancelAt, settings
Set fso = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1)
WriteProject "Lib", "OleDll", ""
WriteProject "Bad", "OleDll", "Reference=*\ALib.vbp" & vbCrLf
WriteProject "App", "Exe", "Reference=*\ALib.vbp" & vbCrLf
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.VBExe = WScript.Arguments(0)
settings.CreateReport = True
settings.BuildReport = folder
settings.ApplyEdit

Set b = WScript.CreateObject("Hearthmake.Build", "Build_")
b.BeginEdit
b.Name = "Desk"
b.ApplyEdit
b.Projects.Add folder & "\Bad.vbp" ' expect: added Bad
b.Projects.Add folder & "\Lib.vbp" ' expect: added Lib
b.Projects.Add folder & "\App.vbp" ' expect: added App
b.AutoDetectReferences
b.Projects.SetCompileOrder

' The host cancels before the first project.
cancelAt = "Lib"
WScript.Echo b.Projects.Build(False)
' expect: start False
' expect: MTS Shutting down COM+ Applications
' expect: will compile Lib
' expect: cancelled Lib
' expect: -1
WScript.Echo b.FailedProject Is Nothing ' expect: -1

' A project fails.
cancelAt = ""
WScript.Echo b.Projects.Build(False)
' expect: start False
' expect: MTS Shutting down COM+ Applications
' expect: will compile Lib
' expect: compiled Lib
' expect: will compile Bad
' expect: failed Bad True
' expect: 0
WScript.Echo b.FailedProject.Name & " " & b.FailedProject.CompiledOK ' expect: Bad False
WScript.Echo InStr(b.FailedProject.CompileError, "Variable not defined") > 0 ' expect: -1
b.StopReporting False

' The project is mended, and the run goes on where it stopped.
b.Projects.GetByName("Bad").BeginEdit
b.Projects.GetByName("Bad").CompileMe = False
b.Projects.GetByName("Bad").ApplyEdit
WScript.Echo b.Projects.Build(True)
' expect: start True
' expect: will compile App
' expect: compiled App
' expect: complete
' expect: -1
b.StopReporting True
Dim report
report = fso.OpenTextFile(folder & "\BUILD_Desk.log").ReadAll
WScript.Echo InStr(report, "Start build: 'Desk' Time:") > 0 ' expect: -1
WScript.Echo InStr(report, "[Compiling projects]" & vbCrLf & vbCrLf) > 0 ' expect: -1
WScript.Echo InStr(report, "Build Stoped" & vbCrLf) > 0 ' expect: -1
WScript.Echo InStr(report, "Build successfully completed" & vbCrLf) > 0 ' expect: -1
WScript.DisconnectObject b
WScript.Echo b.Projects.Build(True) ' expect: -1
b.Kill

Sub Build_ProjectAdded(project)
  WScript.Echo "added " & project.Name
End Sub
Sub Build_BuildStart(resume_)
  WScript.Echo "start " & resume_
End Sub
Sub Build_WillCompile(project, cancel)
  WScript.Echo "will compile " & project.Name
  If project.Name = cancelAt Then cancel = True
End Sub
Sub Build_ProjectCompiled(project)
  WScript.Echo "compiled " & project.Name
End Sub
Sub Build_BuildCancled(project)
  WScript.Echo "cancelled " & project.Name
End Sub
Sub Build_BuildFaild(project, message, isCompileError)
  WScript.Echo "failed " & project.Name & " " & isCompileError
End Sub
Sub Build_BuildComplete()
  WScript.Echo "complete"
End Sub
Sub Build_MTSEvent(info, cancel)
  WScript.Echo "MTS " & info
End Sub

Sub WriteProject(name, kind, rows)
  With fso.CreateTextFile(folder & "\" & name & ".vbp", True)
    .Write "Type=" & kind & vbCrLf & rows & "Startup=""(None)""" & vbCrLf & "Name=""" & name & """" & vbCrLf & "MajorVer=1" & vbCrLf & "MinorVer=0" & vbCrLf
    .Close
  End With
End Sub
