' Takes lines apart, changes the fields and joins them again.
Option Explicit
Dim rounds, round, text, sum
rounds = 20
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function MakeText(n)
  Dim lines(), i
  ReDim lines(n - 1)
  For i = 1 To n
    lines(i - 1) = "name" & i & ",street " & i Mod 100 & ",town,country"
  Next
  MakeText = Join(lines, vbLf)
End Function

Function Work(text)
  Dim lines, fields, i
  lines = Split(text, vbLf)
  For i = 0 To UBound(lines)
    fields = Split(lines(i), ",")
    fields(1) = Replace(fields(1), "street", "road")
    fields(3) = UCase(fields(3))
    lines(i) = Join(fields, ";")
  Next
  Work = Join(lines, vbCrLf)
End Function

text = MakeText(10000)
sum = 0
For round = 1 To rounds
  sum = sum + Len(Work(text))
Next
WScript.Echo sum
