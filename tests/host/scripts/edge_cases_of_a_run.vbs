' needs event handlers
Option Explicit
Dim fso, folder, b, settings, events, p
Set fso = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1)
WriteProject "One"
WriteProject "Bad"
WriteProject "Two"
With fso.CreateTextFile(folder & "\All.VBG", True)
  .Write "VBGROUP 5.0" & vbCrLf & "Project=One.vbp" & vbCrLf & "Project=Bad.vbp" & vbCrLf & "StartupProject=Two.vbp" & vbCrLf
  .Close
End With
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.VBExe = WScript.Arguments(0)
settings.RunScripts = True
settings.ApplyEdit
Set b = WScript.CreateObject("Hearthmake.Build", "Build_")
b.BeginEdit
b.Name = "Edge"
b.ApplyEdit
' A group file whose name ends in capitals is a group too.
Set p = b.Projects.Add(folder & "\All.VBG")
WScript.Echo p.Name & " " & b.Projects.Count ' expect: Two 3
b.Scripts.BeforeComplie = "Scripts.Notify ""before"""
b.Scripts.CompileComplete = "Scripts.Notify ""done"""

' A run that fails is resumed at the failed project, without its first script and without shutting anything down.
Run False ' expect: start False;note before;MTS Shutting down COM+ Applications;compile One;compiled One;compile Bad;failed Bad;= 0
WScript.Echo b.Projects(1).CompiledOK & " " & b.Projects(2).CompiledOK ' expect: True False
Run True ' expect: start True;compile Bad;failed Bad;= 0

' Nothing to compile: only the events and scripts of the run itself.
For Each p In b.Projects
  p.CompileMe = False
Next
Run False ' expect: start False;note before;MTS Shutting down COM+ Applications;note done;complete;= -1

' A script of the failure that fails itself, with script errors ignored.
settings.IgnoreScriptError = True
settings.ApplyEdit
b.Scripts.BuildFailed = "x = 1 / 0"
b.Projects(2).CompileMe = True
Set b = Again(b)
Run False
' expect: start False;note before;MTS Shutting down COM+ Applications;compile One;compiled One;compile Bad;failed Bad;error Script error in event Build Failed. Division by zero;= 0
b.Kill

Sub Run(resume_)
  events = ""
  Dim result
  result = b.Projects.Build(resume_)
  WScript.Echo events & "= " & CInt(result)
End Sub
Function Again(build)
  build.Scripts.Save
  Set Again = WScript.CreateObject("Hearthmake.Build", "Build_")
  Again.Load build.Id
  build.Kill
End Function
Sub Build_BuildStart(resume_) : events = events & "start " & resume_ & ";" : End Sub
Sub Build_WillCompile(project, cancel) : events = events & "compile " & project.Name & ";" : End Sub
Sub Build_ProjectCompiled(project) : events = events & "compiled " & project.Name & ";" : End Sub
Sub Build_BuildFaild(project, message, isCompileError) : events = events & "failed " & project.Name & ";" : End Sub
Sub Build_BuildComplete() : events = events & "complete;" : End Sub
Sub Build_MTSEvent(info, cancel) : events = events & "MTS " & info & ";" : End Sub
Sub Build_Error(message) : events = events & "error " & message & ";" : End Sub
Sub Build_ScriptNotify(message, cancel, progress) : events = events & "note " & message & ";" : End Sub
Sub WriteProject(name)
  With fso.CreateTextFile(folder & "\" & name & ".vbp", True)
    .Write "Type=Exe" & vbCrLf & "Startup=""(None)""" & vbCrLf & "Name=""" & name & """" & vbCrLf & "MajorVer=1" & vbCrLf & "MinorVer=0" & vbCrLf
    .Close
  End With
End Sub
