' Counts words in a dictionary and sums the counts up again.
Option Explicit
Dim rounds, round, sum
rounds = 2
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function CountWords(n)
  Dim counts, i, word, key, check
  Set counts = CreateObject("Scripting.Dictionary")
  For i = 1 To n
    word = "w" & ((i * 7001) Mod 50021)
    If counts.Exists(word) Then
      counts(word) = counts(word) + 1
    Else
      counts.Add word, 1
    End If
  Next
  check = counts.Count
  For Each key In counts.Keys
    check = (check * 3 + counts(key)) Mod 1000003
  Next
  CountWords = check
End Function

sum = 0
For round = 1 To rounds
  sum = sum + CountWords(300000)
Next
WScript.Echo sum
