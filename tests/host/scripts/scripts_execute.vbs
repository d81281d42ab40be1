Option Explicit
Dim b, s, text, fso, file
Set fso = CreateObject("Scripting.FileSystemObject")
file = WScript.Arguments(1) & "\lib.vbs"
With fso.CreateTextFile(file, True)
  .Write "Function Twice(x)" & vbCrLf & "  Twice = 2 * x" & vbCrLf & "End Function"
  .Close
End With
Set b = CreateObject("Hearthmake.Build")
b.BeginEdit
b.Name = "Shop"
b.ApplyEdit
Set s = b.Scripts
WScript.Echo s.Execute("") ' expect: -1
' What one script defines, later ones see; so does Session.
s.Execute "'Include<" & file & ">"
s.Execute "Session(""answer"") = Twice(21)"
s.Execute "Build.BeginEdit : Build.Name = ""Shop "" & Session(""answer"") : Build.ApplyEdit"
WScript.Echo b.Name ' expect: Shop 42
' The members of the build are names of their own; App tells of the library.
s.Execute "Session(""a"") = Name & "" "" & Id & "" "" & App.EXEName"
text = "Session(""b"") = ""%Build.Name% has %Build.Projects.Count%"""
s.Execute text
WScript.Echo text ' expect: Session("b") = "Shop 42 has 0"
s.Execute "Build.BeginEdit : Build.Name = Session(""a"") & ""/"" & Session(""b"") : Build.ApplyEdit"
WScript.Echo b.Name ' expect: Shop 42 1 Hearthmake/Shop 42 h

On Error Resume Next
s.Execute "x = 1" & vbCrLf & "y = x / 0"
WScript.Echo Hex(Err.Number) & "|" & Err.Source & "|" & Err.Description ' expect: 8004000E|Scripts.Execute|Script Error: Division by zero
' expect: y = x / 0
WScript.Echo s.ErrorLine & " " & s.ErrorText ' expect: 2 y = x / 0
Err.Clear
s.Execute "If"
WScript.Echo Hex(Err.Number) & "|" & Err.Source & "|" & Split(Err.Description, vbCrLf)(0) ' expect: 8004000E|Scripts.Execute|Script Error: Expected expression
Err.Clear
s.Execute "Err.Raise 1234, ""me"", ""my own words"""
WScript.Echo Hex(Err.Number) & "|" & Split(Err.Description, vbCrLf)(0) ' expect: 8004000E|Script Error: my own words
Err.Clear
s.Execute "'Include<C:\no\such.vbs>"
WScript.Echo Hex(Err.Number) & "|" & Split(Err.Description, vbCrLf)(0) ' expect: 8004000E|Script Error: Could not open include file C:\no\such.vbs
Err.Clear
s.Execute "a = ""%Build.Nosuch%"""
WScript.Echo Hex(Err.Number) & "|" & Err.Source & "|" & Err.Description ' expect: 8004000D|Scripts.EvaluateInternals|Method Nosuch failed
Err.Clear
s.Execute "x = ""%Build.Name"""
WScript.Echo Err.Number ' expect: 0

' Objects of the host.
Dim bag
Set bag = CreateObject("Scripting.Dictionary")
s.AddObject bag, "Bag"
s.Execute "Bag(""k"") = ""from the script"""
WScript.Echo bag("k") ' expect: from the script

' A script that takes too long.
Dim settings
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.ScriptTimeOut = 50
settings.ApplyEdit
Set b = CreateObject("Hearthmake.Build")
b.Load 1
Err.Clear
b.Scripts.Execute "On Error Resume Next" & vbCrLf & "Do" & vbCrLf & "Loop"
WScript.Echo Hex(Err.Number) & "|" & Left(Err.Description, 14) ' expect: 8004000E|Script Error: 
