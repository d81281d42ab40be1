' needs event handlers
Option Explicit
' A whole host over the example suite, with the compiler that stands in for Visual Basic (third argument).
Dim fso, suite, b, settings, cancelAt, compiled, p, text, file
Set fso = CreateObject("Scripting.FileSystemObject")
suite = WScript.Arguments(1) & "\suite"
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.VBExe = WScript.Arguments(2)
settings.CreateReport = True
settings.BuildReport = suite
settings.ApplyEdit

Set b = WScript.CreateObject("Hearthmake.Build", "Build_")
b.BeginEdit
b.Name = "Suite"
b.ApplyEdit
b.CreateBuildFromPath suite, False
b.Projects.SetCompileOrder
WScript.Echo b.Projects.Count & " " & b.Projects(1).Name ' expect: 13 OdCommon

cancelAt = "OdStock"
WScript.Echo b.Projects.Build(False) & " " & (compiled < 13)
' expect: cancelled at OdStock
' expect: True True
cancelAt = ""

' A source loses a line: the compiler refuses it, and the run stops there.
file = suite & "\Stock\Warehouse.cls"
text = fso.OpenTextFile(file).ReadAll
fso.OpenTextFile(file, 2).Write Replace(text, "End Function", "", 1, 1)
WScript.Echo b.Projects.Build(True)
' expect: failed OdStock True
' expect: 0
WScript.Echo b.FailedProject.Name & " " & (Len(b.FailedProject.CompileError) > 0) ' expect: OdStock True
fso.OpenTextFile(file, 2).Write text
WScript.Echo b.Projects.Build(True)
' expect: complete 13
' expect: -1
b.StopReporting True
text = fso.OpenTextFile(suite & "\BUILD_Suite.log").ReadAll
WScript.Echo (InStr(text, vbCrLf & "OdStock (Time: ") > 0) & " " & (InStr(text, "Compile failed: ") > 0) & " " & (Right(text, 32) = "Build successfully completed" & vbCrLf & vbCrLf)
' expect: True True True
b.Kill

Sub Build_WillCompile(project, cancel)
  If project.Name = cancelAt Then cancel = True
End Sub
Sub Build_ProjectCompiled(project)
  compiled = compiled + 1
End Sub
Sub Build_BuildCancled(project)
  WScript.Echo "cancelled at " & project.Name
End Sub
Sub Build_BuildFaild(project, message, isCompileError)
  WScript.Echo "failed " & project.Name & " " & isCompileError
End Sub
Sub Build_BuildComplete()
  WScript.Echo "complete " & compiled
End Sub
