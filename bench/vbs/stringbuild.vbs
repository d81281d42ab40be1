' Builds texts piece by piece: VBScript appends to the text, Lua collects and concatenates.
Option Explicit
Dim rounds, round, total
rounds = 20
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function Build(n)
  Dim text, i
  text = ""
  For i = 1 To n
    text = text & "item " & i & ";"
  Next
  Build = text
End Function

total = 0
For round = 1 To rounds
  total = total + Len(Build(40000))
Next
WScript.Echo total
