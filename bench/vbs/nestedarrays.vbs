' Multiplies matrices: arrays of two dimensions, and rows that are arrays in an array.
Option Explicit
Dim rounds, round, sum
rounds = 12
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function Rows(n, factor)
  Dim all(), row(), i, j
  ReDim all(n - 1)
  For i = 0 To n - 1
    ReDim row(n - 1)
    For j = 0 To n - 1
      row(j) = (i * factor + j) Mod 10
    Next
    all(i) = row
  Next
  Rows = all
End Function

Function Product(a, b, n)
  Dim c(), i, j, k, sum
  ReDim c(n - 1, n - 1)
  For i = 0 To n - 1
    For j = 0 To n - 1
      sum = 0
      For k = 0 To n - 1
        sum = sum + a(i)(k) * b(k)(j)
      Next
      c(i, j) = sum
    Next
  Next
  Product = c
End Function

Function Trace(c, n)
  Dim i
  Trace = 0
  For i = 0 To n - 1
    Trace = Trace + c(i, n - 1 - i)
  Next
End Function

sum = 0
For round = 1 To rounds
  sum = sum + Trace(Product(Rows(120, 3), Rows(120, 7), 120), 120)
Next
WScript.Echo sum
