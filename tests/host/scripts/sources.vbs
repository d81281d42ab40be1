' needs event handlers, and git
Option Explicit
Dim fso, shell, folder, b, source, cancelAt
Set fso = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
folder = WScript.Arguments(1)
shell.CurrentDirectory = folder

' A database: a repository, and the ini file that tells of it.
fso.CreateFolder folder & "\repository"
fso.CreateFolder folder & "\repository\Desk"
fso.CreateFolder folder & "\repository\Tools"
Git "init -q -b main"
Change "Desk\a.bas", "one"
Change "Tools\t.bas", "tool"
WriteText folder & "\srcsafe.ini", "[git]" & vbCrLf & "repository = repository" & vbCrLf & _
  "[users]" & vbCrLf & "Bob = bob@example.org" & vbCrLf

Set b = WScript.CreateObject("Hearthmake.Build", "Build_")
b.BeginEdit
b.Name = "Desk"
b.ApplyEdit
AddSource "$/Desk", "work\Desk"
Set source = AddSource("$/Tools", "work\Tools")
WScript.Echo b.SSProjects.Count & " " & b.SSProjects(2).Project & " " & TypeName(source) ' expect: 2 $/Tools SSProject
WScript.Echo b.SSProjects.Parent Is b ' expect: -1

' The host cancels before the second project.
cancelAt = "$/Tools"
WScript.Echo b.SSProjects.GetLatestFromSoursafe
' expect: getting $/Desk
' expect: getting $/Tools
' expect: -1
WScript.Echo ReadText("work\Desk\a.bas") & " " & fso.FileExists(folder & "\work\Tools\t.bas") ' expect: one False

cancelAt = ""
b.SSProjects(1).Skip = True
WScript.Echo b.SSProjects.GetLatestFromSoursafe
' expect: getting $/Tools
' expect: -1
WScript.Echo ReadText("work\Tools\t.bas") ' expect: tool

' A label, a change behind it, and the label again.
Set source = b.SSProjects(1)
WScript.Echo source.Label("Release 1", "as shipped") ' expect: -1
Change "Desk\a.bas", "two"
WScript.Echo source.GetLatest & " " & ReadText("work\Desk\a.bas") ' expect: True two
WScript.Echo source.GetFromLabel("Release 1") & " " & ReadText("work\Desk\a.bas") ' expect: True one
WScript.Echo source.GetFromLabel("Release 2") & " " & ReadText("work\Desk\a.bas") ' expect: False one

' A file goes in, and a wrong one does not.
Dim reason
source.GetLatest
fso.GetFile(folder & "\work\Desk\a.bas").Attributes = 0
WriteText folder & "\work\Desk\a.bas", "three"
WScript.Echo b.SSProjects.CheckInFile(folder & "\work\Desk\a.bas", "", False, reason) & " [" & reason & "]" ' expect: True []
WScript.Echo b.SSProjects.CheckInFile(folder & "\work\Desk\b.bas", "", False, reason) ' expect: 0
WScript.Echo reason ' expect: File $/Desk\b.bas not found in SourceSafe
WScript.Echo Said("log -1 --format=%an,%s") ' expect: Bob,Hearthmake Check in
WScript.Echo Said("show main:Desk/a.bas") ' expect: three

' Errors reach the script.
source.BeginEdit
source.Project = "$/Nowhere"
On Error Resume Next
source.GetLatest
WScript.Echo Err.Number <> 0 And InStr(Err.Description, "$/Nowhere") > 0 ' expect: -1
Err.Clear
source.BeginEdit
WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description ' expect: 1004 SSProject.BeginEdit: Already in edit mode
Err.Clear
b.SSProjects(2).Delete
WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description ' expect: 1004 SSProject.CancelEdit: Not in edit mode
On Error GoTo 0
source.CancelEdit
WScript.Echo source.Project ' expect: $/Desk
b.Kill

Sub Build_GettingLatestVersion(project, cancel)
  WScript.Echo "getting " & project.Project
  If project.Project = cancelAt Then cancel = True
End Sub

Function AddSource(path, work)
  Set AddSource = b.SSProjects.Create
  AddSource.BeginEdit
  AddSource.SrcSafeIni = folder & "\srcsafe.ini"
  AddSource.User = "Bob"
  AddSource.Project = path
  AddSource.WorkingFolder = folder & "\" & work
  AddSource.ApplyEdit
End Function

Sub Git(arguments)
  shell.Run "git -C repository -c user.name=Ann -c user.email=ann@example.org " & arguments, 0, True
End Sub
Function Said(arguments)
  Said = Trim(Replace(shell.Exec("git -C repository " & arguments).StdOut.ReadAll, vbLf, " "))
End Function
Sub Change(name, text)
  WriteText folder & "\repository\" & name, text
  Git "add -A"
  Git "commit -q -m change"
End Sub
Sub WriteText(path, text)
  With fso.CreateTextFile(path, True)
    .Write text
    .Close
  End With
End Sub
Function ReadText(name)
  With fso.OpenTextFile(folder & "\" & name)
    ReadText = .ReadAll
    .Close
  End With
End Function
