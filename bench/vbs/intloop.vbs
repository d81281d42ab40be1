' Integer arithmetic in nested loops, kept below 2^24.
Option Explicit
Dim rounds
rounds = 8
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function Mix(n)
  Dim i, j, sum
  sum = 0
  For i = 1 To n
    For j = 1 To 1000
      sum = (sum + i * 3 + (j And 7)) Mod 1000003
    Next
  Next
  Mix = sum
End Function

WScript.Echo Mix(5000 * rounds)
