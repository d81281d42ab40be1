' Regular expressions over a text: finds numbers with their keys, replaces words.
Option Explicit
Dim rounds, round, text, sum
rounds = 40
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function MakeText(n)
  Dim parts(), i
  ReDim parts(n - 1)
  For i = 1 To n
    parts(i - 1) = "key" & i & "=" & (i * 37) Mod 1000 & "; some words between"
  Next
  MakeText = Join(parts, vbLf)
End Function

Function Work(text)
  Dim pairs, words, found, total
  Set pairs = New RegExp
  pairs.Pattern = "(\w+)=(\d+)"
  pairs.Global = True
  total = 0
  For Each found In pairs.Execute(text)
    total = total + Len(found.SubMatches(0)) + CLng(found.SubMatches(1))
  Next
  Set words = New RegExp
  words.Pattern = "words|between"
  words.Global = True
  Work = total + Len(words.Replace(text, "x"))
End Function

text = MakeText(5000)
sum = 0
For round = 1 To rounds
  sum = sum + Work(text)
Next
WScript.Echo sum
