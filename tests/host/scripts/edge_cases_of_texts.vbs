Option Explicit
Dim fso, folder, b, c, s, settings, text
Set fso = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1)
fso.CreateTextFile(folder & "\lib.vbs", True).Write "Session(""lib"") = Session(""lib"") + 1"
Set b = CreateObject("Hearthmake.Build")
b.BeginEdit
b.Name = "Texts"
b.ApplyEdit

' Two texts in the column of three: the third is empty, and is written back as such.
b.Scripts.BeforeComplie = "A[||]B"
b.Scripts.Save
Set c = CreateObject("Hearthmake.Build")
c.Load b.Id
WScript.Echo c.Scripts.BeforeComplie & "," & c.Scripts.BeforeProjectComplie & "," & c.Scripts.AfterProjectCompile ' expect: A,B,

' The directive counts in a comment only; elsewhere it reaches the engine, and fails there.
Set s = c.Scripts
text = "'Include<" & folder & "\lib.vbs>"
s.Execute text
WScript.Echo text = "'" & vbCrLf & "Session(""lib"") = Session(""lib"") + 1" & vbCrLf ' expect: -1
On Error Resume Next
s.Execute "Include<" & folder & "\lib.vbs>"
WScript.Echo Hex(Err.Number) ' expect: 8004000E
On Error GoTo 0
' A value of the build in every place; a placeholder without an end stays.
text = "Session(""n"") = ""%Build.Name%-%Build.Name%-%Build.Id%"" ' %Build.Name"
s.Execute text
WScript.Echo text ' expect: Session("n") = "Texts-Texts-1" ' %Build.Name
WScript.Echo s.Execute("") ' expect: -1

' A report without entries still begins; two builds of one name share it.
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.BuildReport = folder
settings.CreateReport = False
settings.ApplyEdit
b.StopReporting True
WScript.Echo CountOf("Start build: 'Texts' Time:") & " " & CountOf("Build successfully completed") ' expect: 1 0
settings.CreateReport = True
settings.ApplyEdit
Dim other
Set other = CreateObject("Hearthmake.Build")
other.BeginEdit
other.Name = "Texts"
other.ApplyEdit
other.StopReporting True
WScript.Echo CountOf("Start build: 'Texts' Time:") ' expect: 2

Function CountOf(sought)
  CountOf = UBound(Split(fso.OpenTextFile(folder & "\BUILD_Texts.log").ReadAll, sought))
End Function
