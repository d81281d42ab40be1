' Builds a suite from start to end and tells what happens.
'   hearthmake script nightly.vbs FOLDER COMPILER
' FOLDER is the folder of the suite, COMPILER the compiler's path; both as DOS paths.
Option Explicit
Dim settings, build, script

Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.VBExe = WScript.Arguments(1)
settings.RunScripts = True
settings.ApplyEdit

' The second argument is the prefix of the procedures that hear the build's events.
Set build = WScript.CreateObject("Hearthmake.Build", "Build_")
build.BeginEdit
build.Name = "Nightly"
build.ApplyEdit
build.CreateBuildFromPath WScript.Arguments(0), False
build.Projects.SetCompileOrder

' A script of the build itself: it runs inside of each run, whoever starts it, and knows the project at work.
script = "count = count + 1" & vbCrLf & _
         "Scripts.Notify count & "" of %Build.Projects.Count%: "" & Project.Name, , 100 * count \ Projects.Count"
build.Scripts.AfterProjectCompile = script
build.Scripts.Save

If build.Projects.Build(False) Then
  WScript.Echo "Done: " & build.Projects.Count & " projects."
Else
  WScript.Echo "Stopped at " & build.FailedProject.Name & "."
End If
' Parts the objects of the build, which hold each other.
build.Kill

Sub Build_BuildStart(bResume)
  WScript.Echo "Building " & build.Name
End Sub

Sub Build_ScriptNotify(message, cancel, progress)
  WScript.Echo Right("  " & progress, 3) & " % " & message
End Sub

Sub Build_BuildFaild(project, message, isCompileError)
  WScript.Echo message
End Sub
