Option Explicit
Dim s, other
Set s = CreateObject("Hearthmake.Settings")
WScript.Echo s.ScriptTimeOut & " " & s.RunScripts & " " & s.CreateReport & " " & s.IgnoreScriptError ' expect: 0 False False False
s.BeginEdit
s.VBExe = WScript.Arguments(0)
s.RunScripts = True
s.ScriptTimeOut = -1
s.ApplyEdit
Set other = CreateObject("Hearthmake.Settings")
WScript.Echo other.RunScripts & " " & other.ScriptTimeOut & " " & (other.VBExe = WScript.Arguments(0)) ' expect: True -1 True
s.ScriptTimeOut = 500
s.CancelEdit
WScript.Echo s.ScriptTimeOut ' expect: 0
On Error Resume Next
s.CancelEdit
WScript.Echo Err.Number & "|" & Err.Description ' expect: 1004|Not in edit mode
Err.Clear
s.ScriptTimeOut = "soon"
WScript.Echo Err.Number ' expect: 13
