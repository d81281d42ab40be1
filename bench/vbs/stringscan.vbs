' Looks at every character of a text: counts vowels and words and keeps a checksum.
Option Explicit
Dim rounds, round, text, sum
rounds = 60
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function MakeText(n)
  Dim parts(), i
  ReDim parts(n - 1)
  For i = 1 To n
    parts(i - 1) = "the quick brown fox number " & i & " jumps over the lazy dog"
  Next
  MakeText = Join(parts, " ")
End Function

Function Scan(s)
  Dim i, c, vowels, words, check
  vowels = 0
  words = 0
  check = 0
  For i = 1 To Len(s)
    c = Mid(s, i, 1)
    If c = " " Then
      words = words + 1
    ElseIf InStr("aeiou", c) > 0 Then
      vowels = vowels + 1
    End If
    check = (check * 31 + Asc(c)) Mod 1000003
  Next
  Scan = (vowels + words * 7 + check) Mod 1000003
End Function

text = MakeText(1000)
sum = 0
For round = 1 To rounds
  sum = (sum + Scan(text)) Mod 1000003
Next
WScript.Echo sum
