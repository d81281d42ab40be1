Option Explicit
Dim b, c
Set b = CreateObject("Hearthmake.Build")
b.BeginEdit
b.Name = "Shop"
b.ApplyEdit
WScript.Echo TypeName(b.Scripts) & " [" & b.Scripts.BeforeComplie & "]" ' expect: Scripts []
b.Scripts.BeforeSourceSafe = "a"
b.Scripts.BeforeComplie = "b"
b.Scripts.BeforeProjectComplie = "c"
b.Scripts.AfterProjectCompile = "d"
b.Scripts.BuildFailed = "e"
b.Scripts.CompileComplete = "f " & ChrW(233) & vbCrLf & "second line"
b.Scripts.AfterMTSpackage = "g"
b.Scripts.Save
Set c = CreateObject("Hearthmake.Build")
c.Load b.Id
With c.Scripts
  WScript.Echo .BeforeSourceSafe & .BeforeComplie & .BeforeProjectComplie & .AfterProjectCompile & .BuildFailed & .AfterMTSpackage ' expect: abcdeg
  WScript.Echo .CompileComplete = b.Scripts.CompileComplete ' expect: -1
End With
' Three texts share a column: one that holds the separator is cut apart at the next load.
b.Scripts.BeforeComplie = "x[||]y"
b.Scripts.BeforeProjectComplie = "z"
b.Scripts.Save
Set c = CreateObject("Hearthmake.Build")
c.Load b.Id
With c.Scripts
  WScript.Echo .BeforeComplie & "|" & .BeforeProjectComplie & "|" & .AfterProjectCompile ' expect: x|y|z
End With
